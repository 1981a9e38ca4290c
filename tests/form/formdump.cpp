#include "formdump.h"

#include "ui_mainwindow.h"

#include "attachments/richtextpushbutton.h"

#include <QAbstractButton>
#include <QApplication>
#include <QBoxLayout>
#include <QCheckBox>
#include <QComboBox>
#include <QCryptographicHash>
#include <QDirIterator>
#include <QDoubleValidator>
#include <QFile>
#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHash>
#include <QIcon>
#include <QImage>
#include <QIntValidator>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QMetaEnum>
#include <QMetaProperty>
#include <QPixmap>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRegExpValidator>
#include <QRegularExpressionValidator>
#include <QSpacerItem>
#include <QStackedWidget>
#include <QTabBar>
#include <QTabWidget>
#include <QTextBlock>
#include <QTextDocument>
#include <QTreeWidget>
#include <QValidator>

#include <algorithm>
#include <vector>

namespace {

const QStringList kHeader = {
    "# The report window's Designer form, form/mainwindow.ui, as Ui::MainWindow builds it on a plain",
    "# QMainWindow, without what the window's constructor changes: resized to 720x470 and shown on the",
    "# offscreen platform with the test suite's fonts at 96 dpi, each tab page laid out in turn.",
    "# form/form_layout compares the form with this file line by line; after a change in Designer,",
    "# tools/update-form-dump.sh writes it anew, and git diff shows what changed.",
    "#",
    "# \"name: Class in parent\" begins a widget (parent: its nearest named ancestor in the form),",
    "# \"name: Class of widget\" a widget's own layout, \"name: Class in layout\" a nested one; the",
    "# lines \"name.property: value\" that follow are about it. Geometry is \"x,y widthxheight\" in the",
    "# window's coordinates, as laid out once shown (with every part of the form showing, the window",
    "# needs more than 720x470). Minimum and maximum sizes are setupUi's, with a second line",
    "# \"(shown)\" where showing changed them (a style sheet's min-width, the window's layout).",
    "# Strings are in double quotes, with \\\\ \\\" \\n \\r \\t escaped, other control characters as",
    "# \\x{hex} and characters outside ASCII as \\u{hex}. An image is \"widthxheight\" and the",
    "# resource file with the same pixels. The Windows build, under Wine, has other fonts and another",
    "# style, so its run leaves out the lines that follow from them: those whose property ends in",
    "# \"geometry\", \"(shown)\" or \"(drawn)\" (an icon the program drew from text).",
};

// ---- values as text ---------------------------------------------------------------------

QString boolText(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

QString sizeText(const QSize &size)
{
    return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
}

QString rectText(const QRect &rect)
{
    return QStringLiteral("%1,%2 %3").arg(rect.x()).arg(rect.y()).arg(sizeText(rect.size()));
}

// Flags by the keys of their set bits, in the order they are declared, each bit named
// once ("AlignLeft|AlignVCenter", not AlignLeft's alias AlignLeading as well); a value
// that has a key of its own by that key (AlignCenter).
QString enumText(const QMetaEnum &metaEnum, int value)
{
    if (const char *key = metaEnum.valueToKey(value))
        return QString::fromLatin1(key);
    if (!metaEnum.isFlag() || value == 0)
        return QString::number(value);
    QStringList keys;
    int covered = 0;
    for (int i = 0; i < metaEnum.keyCount(); ++i) {
        const int bits = metaEnum.value(i);
        if (bits != 0 && (bits & value) == bits && (bits & ~covered) != 0) {
            keys << QString::fromLatin1(metaEnum.key(i));
            covered |= bits;
        }
    }
    if (covered != value)
        keys << QString::number(value & ~covered);
    return keys.join(QLatin1Char('|'));
}

template <typename Enum>
QString enumText(Enum value)
{
    return enumText(QMetaEnum::fromType<Enum>(), int(value));
}

QString sizePolicyText(const QSizePolicy &policy)
{
    QString text = enumText(policy.horizontalPolicy()) + '/' + enumText(policy.verticalPolicy());
    if (policy.horizontalStretch() || policy.verticalStretch())
        text += QStringLiteral(", stretch %1/%2").arg(policy.horizontalStretch()).arg(policy.verticalStretch());
    if (policy.hasHeightForWidth())
        text += QStringLiteral(", height for width");
    return text;
}

QString fontText(const QFont &font)
{
    QString size = font.pointSize() > 0 ? QStringLiteral("%1 pt").arg(font.pointSize())
                                        : QStringLiteral("%1 px").arg(font.pixelSize());
    return QStringLiteral("%1, %2, weight %3, italic %4, bold %5, underline %6, strike out %7, strategy %8")
        .arg(quotedForDump(font.family()), size)
        .arg(font.weight())
        .arg(boolText(font.italic()), boolText(font.bold()), boolText(font.underline()), boolText(font.strikeOut()),
             enumText(font.styleStrategy()));
}

// Images by their pixels, premultiplied so that the colour of transparent pixels plays
// no part.
QByteArray imageHash(const QImage &image)
{
    const QImage argb = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QCryptographicHash hash(QCryptographicHash::Sha1);
    hash.addData(sizeText(argb.size()).toLatin1());
    for (int y = 0; y < argb.height(); ++y)
        hash.addData(reinterpret_cast<const char *>(argb.constScanLine(y)), argb.width() * 4);
    return hash.result();
}

// Every image of the program's resources by its pixels, so that a pixmap in the form
// reads as the file it shows.
const QHash<QByteArray, QString> &resourceImages()
{
    static const QHash<QByteArray, QString> images = [] {
        QHash<QByteArray, QString> byHash;
        QStringList paths;
        QDirIterator it(QStringLiteral(":/"), QDir::Files, QDirIterator::Subdirectories);
        while (it.hasNext())
            paths << it.next();
        paths.sort(); // the first of two identical files, whatever the order of the tree
        for (const QString &path : qAsConst(paths)) {
            if (path.startsWith(QLatin1String(":/qt-project.org/")))
                continue;
            const QImage image(path);
            if (!image.isNull() && !byHash.contains(imageHash(image)))
                byHash.insert(imageHash(image), path);
        }
        return byHash;
    }();
    return images;
}

const QString kDrawnImage = QStringLiteral("(drawn by the program, not a resource image)");

QString imageText(const QImage &image)
{
    if (image.isNull())
        return QStringLiteral("none");
    const QString source = resourceImages().value(imageHash(image));
    return sizeText(image.size()) + ' ' + (source.isEmpty() ? kDrawnImage : source);
}

QString iconText(const QIcon &icon)
{
    if (icon.isNull())
        return QStringLiteral("none");
    QStringList sizes;
    for (const QSize &size : icon.availableSizes())
        sizes << imageText(icon.pixmap(size).toImage());
    return sizes.isEmpty() ? QStringLiteral("(no fixed sizes)") : sizes.join(QStringLiteral(", "));
}

// The images a label's rich text shows, by the name the text gives: each must load.
QString textImagesText(const QLabel *label)
{
    const QString text = label->text();
    const bool rich =
        label->textFormat() == Qt::RichText || (label->textFormat() == Qt::AutoText && Qt::mightBeRichText(text));
    if (!rich)
        return QStringLiteral("none");
    QTextDocument document;
    document.setHtml(text);
    QStringList images;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (QTextBlock::iterator it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat format = it.fragment().charFormat();
            if (!format.isImageFormat())
                continue;
            const QString name = format.toImageFormat().name();
            const QImage image(name);
            images << quotedForDump(name) + ' '
                          + (image.isNull() ? QStringLiteral("(does not load)") : sizeText(image.size()));
        }
    }
    return images.isEmpty() ? QStringLiteral("none") : images.join(QStringLiteral(", "));
}

QString validatorText(const QValidator *validator)
{
    if (!validator)
        return QStringLiteral("none");
    if (auto *regExp = qobject_cast<const QRegExpValidator *>(validator))
        return QStringLiteral("QRegExpValidator ") + quotedForDump(regExp->regExp().pattern());
    if (auto *regular = qobject_cast<const QRegularExpressionValidator *>(validator))
        return QStringLiteral("QRegularExpressionValidator ") + quotedForDump(regular->regularExpression().pattern());
    if (auto *integer = qobject_cast<const QIntValidator *>(validator))
        return QStringLiteral("QIntValidator %1 to %2").arg(integer->bottom()).arg(integer->top());
    if (auto *real = qobject_cast<const QDoubleValidator *>(validator))
        return QStringLiteral("QDoubleValidator %1 to %2, %3 decimals")
            .arg(real->bottom())
            .arg(real->top())
            .arg(real->decimals());
    return QString::fromLatin1(validator->metaObject()->className());
}

QString variantText(const QVariant &value)
{
    switch (value.userType()) {
    case QMetaType::QString:
        return quotedForDump(value.toString());
    case QMetaType::Bool:
        return boolText(value.toBool());
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Double:
        return value.toString();
    case QMetaType::QSize:
        return sizeText(value.toSize());
    case QMetaType::QRect:
        return rectText(value.toRect());
    case QMetaType::QSizePolicy:
        return sizePolicyText(value.value<QSizePolicy>());
    case QMetaType::QFont:
        return fontText(value.value<QFont>());
    case QMetaType::QPixmap:
        return imageText(value.value<QPixmap>().toImage());
    case QMetaType::QIcon:
        return iconText(value.value<QIcon>());
    default:
        return QStringLiteral("(a %1)").arg(QString::fromLatin1(value.typeName()));
    }
}

// A Qt property by name, enums and flags by their keys.
QString propertyText(const QObject *object, const char *name)
{
    const QMetaObject *meta = object->metaObject();
    const int index = meta->indexOfProperty(name);
    if (index < 0)
        return QStringLiteral("(no such property)");
    const QMetaProperty property = meta->property(index);
    const QVariant value = property.read(object);
    if (property.isEnumType())
        return enumText(property.enumerator(), value.toInt());
    return variantText(value);
}

// ---- the form's objects -----------------------------------------------------------------

QString formParentName(const QWidget *widget)
{
    const QWidget *parent = widget->parentWidget();
    while (parent && !isFormWidget(parent))
        parent = parent->parentWidget();
    return parent ? parent->objectName() : QString();
}

// Every widget of the form in tree order: the order setupUi creates them, a tab page
// where its tab widget's stack holds it. A stack raises and lowers its pages among its
// children, so its pages come in the stack's own order.
void collectWidgets(QWidget *widget, std::vector<QWidget *> &widgets)
{
    if (isFormWidget(widget) || widget->isWindow())
        widgets.push_back(widget);
    QList<QWidget *> children;
    if (auto *stack = qobject_cast<QStackedWidget *>(widget)) {
        for (int i = 0; i < stack->count(); ++i)
            children << stack->widget(i);
    }
    for (QObject *child : widget->children()) {
        QWidget *childWidget = qobject_cast<QWidget *>(child);
        if (childWidget && !childWidget->isWindow() && !children.contains(childWidget))
            children << childWidget;
    }
    for (QWidget *child : qAsConst(children))
        collectWidgets(child, widgets);
}

QString layoutName(const QLayout *layout)
{
    return layout->objectName().isEmpty() ? QStringLiteral("(unnamed %1)").arg(layout->metaObject()->className())
                                          : layout->objectName();
}

// ---- the dump -----------------------------------------------------------------------------

class FormDump
{
public:
    explicit FormDump(QMainWindow &window)
        : m_window(window)
    {
    }

    QStringList lines() const { return m_lines; }

    // Before the window is shown: what setupUi itself set.
    void noteSetUpSizes(const std::vector<QWidget *> &widgets)
    {
        m_setUpWindowSize = m_window.size();
        for (QWidget *widget : widgets)
            m_setUpSizes.insert(widget, {widget->minimumSize(), widget->maximumSize()});
    }

    // Geometry as laid out the first time each thing is on the screen (a tab page and
    // what is on it when its tab is chosen).
    void noteGeometry(const std::vector<QWidget *> &widgets)
    {
        for (QWidget *widget : widgets) {
            if (widget->isVisible() && !m_geometry.contains(widget))
                m_geometry.insert(widget, rectInWindow(widget, widget->rect()));
            if (widget->layout() && !qobject_cast<QMainWindow *>(widget))
                noteLayoutGeometry(widget->layout());
        }
    }

    void describe(const std::vector<QWidget *> &widgets)
    {
        m_lines = kHeader;
        for (QWidget *widget : widgets) {
            describeWidget(widget);
            // A main window's own layout (its central widget, bars and docks) is Qt's.
            if (widget->layout() && !qobject_cast<QMainWindow *>(widget))
                describeLayout(widget->layout());
        }
        describeTabOrder(widgets);
    }

private:
    void add(const QString &subject, const QString &what, const QString &value)
    {
        m_lines << subject + '.' + what + QStringLiteral(": ") + value;
    }
    void addProperty(const QObject *object, const char *name)
    {
        add(object->objectName(), QString::fromLatin1(name), propertyText(object, name));
    }

    QRect rectInWindow(const QWidget *widget, const QRect &rect) const
    {
        if (widget == &m_window)
            return rect;
        return rect.translated(widget->mapTo(&m_window, QPoint(0, 0)));
    }

    void noteLayoutGeometry(QLayout *layout)
    {
        QWidget *owner = layout->parentWidget();
        if (!owner || !owner->isVisible())
            return;
        if (!m_geometry.contains(layout))
            m_geometry.insert(layout, rectInWindow(owner, layout->geometry()));
        for (int i = 0; i < layout->count(); ++i) {
            QLayoutItem *item = layout->itemAt(i);
            if (QSpacerItem *spacer = item->spacerItem(); spacer && !m_geometry.contains(spacer))
                m_geometry.insert(spacer, rectInWindow(owner, spacer->geometry()));
            else if (item->layout())
                noteLayoutGeometry(item->layout());
        }
    }

    QString geometryText(const void *thing, const QRect &now) const { return rectText(m_geometry.value(thing, now)); }

    void describeWidget(QWidget *widget)
    {
        const QString name = widget->objectName();
        QString className = QString::fromLatin1(widget->metaObject()->className());
        // A widget class of the program's own (Qt's classes all begin with Q) says which
        // of Qt's it extends, as the form's custom widget entry does.
        if (!className.startsWith(QLatin1Char('Q'))) {
            const QMetaObject *base = widget->metaObject()->superClass();
            while (base && base->className()[0] != 'Q')
                base = base->superClass();
            className += QStringLiteral(" extends ") + QString::fromLatin1(base ? base->className() : "nothing");
        }
        if (widget == &m_window)
            m_lines << name + QStringLiteral(": ") + className;
        else
            m_lines << name + QStringLiteral(": ") + className + QStringLiteral(" in ") + formParentName(widget);

        add(name, "geometry", geometryText(widget, rectInWindow(widget, widget->rect())));
        add(name, "hidden", boolText(widget->isHidden()));
        add(name, "enabled", boolText(widget->isEnabled()));
        describeSizeLimits(widget);
        addProperty(widget, "sizePolicy");
        addProperty(widget, "focusPolicy");
        // A font of its own, or the one it inherits (the application's, here).
        add(name, "font", widget->testAttribute(Qt::WA_SetFont) ? fontText(widget->font()) : "inherited");
        addProperty(widget, "toolTip");
        addProperty(widget, "statusTip");
        addProperty(widget, "whatsThis");
        addProperty(widget, "accessibleName");
        addProperty(widget, "accessibleDescription");
        addProperty(widget, "styleSheet");
        addProperty(widget, "acceptDrops");

        if (widget == &m_window)
            add(name, "size (set up)", sizeText(m_setUpWindowSize));
        if (auto *mainWindow = qobject_cast<QMainWindow *>(widget)) {
            addProperty(widget, "windowTitle");
            addProperty(widget, "windowIcon");
            add(name, "centralWidget",
                mainWindow->centralWidget() ? mainWindow->centralWidget()->objectName() : QStringLiteral("none"));
        }
        if (qobject_cast<QFrame *>(widget)) {
            addProperty(widget, "frameShape");
            addProperty(widget, "frameShadow");
        }
        if (auto *label = qobject_cast<QLabel *>(widget)) {
            for (const char *property : {"text", "textFormat", "alignment", "wordWrap", "margin", "indent",
                                         "openExternalLinks", "textInteractionFlags", "scaledContents", "pixmap"})
                addProperty(widget, property);
            add(name, "textImages", textImagesText(label));
            add(name, "buddy", label->buddy() ? label->buddy()->objectName() : QStringLiteral("none"));
        }
        if (auto *button = qobject_cast<QAbstractButton *>(widget)) {
            for (const char *property : {"text", "checkable", "checked"})
                addProperty(widget, property);
            // An icon the program drew (a caption rendered with the fonts) is as large as
            // the fonts make it.
            const QString icon = iconText(button->icon());
            const QString drawn = icon.contains(kDrawnImage) ? QStringLiteral(" (drawn)") : QString();
            add(name, "icon" + drawn, icon);
            add(name, "iconSize" + drawn, sizeText(button->iconSize()));
            if (auto *checkBox = qobject_cast<QCheckBox *>(widget))
                add(name, "tristate", boolText(checkBox->isTristate()));
            if (qobject_cast<QPushButton *>(button)) {
                for (const char *property : {"default", "autoDefault", "flat"})
                    addProperty(widget, property);
            }
            // The caption goes through the button's renderer into its icon; the
            // button's own text stays empty.
            if (auto *richText = qobject_cast<RichTextPushButton *>(widget)) {
                add(name, "htmlText", quotedForDump(richText->htmlText()));
                add(name, "captionText", quotedForDump(richText->text()));
            }
        }
        if (auto *lineEdit = qobject_cast<QLineEdit *>(widget))
            describeLineEdit(name, lineEdit);
        if (auto *combo = qobject_cast<QComboBox *>(widget)) {
            for (const char *property : {"editable", "currentIndex", "count", "maxCount", "insertPolicy"})
                addProperty(widget, property);
            for (int i = 0; i < combo->count(); ++i)
                add(name, QStringLiteral("item %1").arg(i), quotedForDump(combo->itemText(i)));
            if (combo->lineEdit())
                describeLineEdit(name + QStringLiteral(".lineEdit"), combo->lineEdit());
            else
                add(name, "lineEdit", "none");
        }
        if (qobject_cast<QPlainTextEdit *>(widget)) {
            for (const char *property :
                 {"plainText", "placeholderText", "readOnly", "tabChangesFocus", "lineWrapMode", "maximumBlockCount"})
                addProperty(widget, property);
        }
        if (qobject_cast<QAbstractItemView *>(widget)) {
            for (const char *property : {"selectionMode", "selectionBehavior", "editTriggers"})
                addProperty(widget, property);
        }
        if (auto *list = qobject_cast<QListWidget *>(widget)) {
            addProperty(widget, "count");
            for (int i = 0; i < list->count(); ++i)
                add(name, QStringLiteral("item %1").arg(i), quotedForDump(list->item(i)->text()));
        }
        if (auto *tree = qobject_cast<QTreeWidget *>(widget))
            describeTree(name, tree);
        if (auto *tabs = qobject_cast<QTabWidget *>(widget))
            describeTabs(name, tabs);
        if (qobject_cast<QGroupBox *>(widget)) {
            for (const char *property : {"title", "checkable", "checked", "flat", "alignment"})
                addProperty(widget, property);
        }
        if (qobject_cast<QProgressBar *>(widget)) {
            for (const char *property : {"minimum", "maximum", "value", "textVisible", "format", "orientation"})
                addProperty(widget, property);
        }
    }

    void describeSizeLimits(QWidget *widget)
    {
        const QString name = widget->objectName();
        const auto setUp = m_setUpSizes.value(widget, {widget->minimumSize(), widget->maximumSize()});
        add(name, "minimumSize", sizeText(setUp.first));
        if (setUp.first != widget->minimumSize())
            add(name, "minimumSize (shown)", sizeText(widget->minimumSize()));
        add(name, "maximumSize", sizeText(setUp.second));
        if (setUp.second != widget->maximumSize())
            add(name, "maximumSize (shown)", sizeText(widget->maximumSize()));
    }

    void describeLineEdit(const QString &name, QLineEdit *edit)
    {
        for (const char *property :
             {"text", "placeholderText", "echoMode", "readOnly", "maxLength", "inputMask", "alignment", "frame"})
            add(name, QString::fromLatin1(property), propertyText(edit, property));
        add(name, "validator", validatorText(edit->validator()));
    }

    void describeTree(const QString &name, QTreeWidget *tree)
    {
        addProperty(tree, "columnCount");
        addProperty(tree, "rootIsDecorated");
        const QTreeWidgetItem *header = tree->headerItem();
        for (int column = 0; column < tree->columnCount(); ++column)
            add(name, QStringLiteral("header %1").arg(column), header ? quotedForDump(header->text(column)) : "none");
        addProperty(tree, "topLevelItemCount");
        // Items in tree order, "item 0.1" for the second child of the first.
        std::vector<std::pair<QString, const QTreeWidgetItem *>> pending;
        for (int i = tree->topLevelItemCount() - 1; i >= 0; --i)
            pending.emplace_back(QString::number(i), tree->topLevelItem(i));
        while (!pending.empty()) {
            const auto [path, item] = pending.back();
            pending.pop_back();
            QStringList texts;
            for (int column = 0; column < tree->columnCount(); ++column)
                texts << quotedForDump(item->text(column));
            add(name, QStringLiteral("item ") + path, texts.join(QStringLiteral(", ")));
            for (int i = item->childCount() - 1; i >= 0; --i)
                pending.emplace_back(path + '.' + QString::number(i), item->child(i));
        }
    }

    void describeTabs(const QString &name, QTabWidget *tabs)
    {
        for (const char *property : {"count", "currentIndex", "tabPosition", "tabShape"})
            addProperty(tabs, property);
        QStringList pages;
        for (int i = 0; i < tabs->count(); ++i)
            pages << tabs->widget(i)->objectName();
        add(name, "pages", pages.join(QStringLiteral(", ")));
        // Keyed by page rather than index, so a tab added in Designer adds lines but
        // leaves the other tabs' lines as they were.
        for (int i = 0; i < tabs->count(); ++i) {
            const QString tab = QStringLiteral("tab(%1)").arg(pages.at(i));
            add(name, tab + ".text", quotedForDump(tabs->tabText(i)));
            add(name, tab + ".toolTip", quotedForDump(tabs->tabToolTip(i)));
            add(name, tab + ".whatsThis", quotedForDump(tabs->tabWhatsThis(i)));
            add(name, tab + ".enabled", boolText(tabs->isTabEnabled(i)));
            add(name, tab + ".icon", iconText(tabs->tabIcon(i)));
        }
    }

    void describeLayout(QLayout *layout)
    {
        const QString name = layoutName(layout);
        const QString className = QString::fromLatin1(layout->metaObject()->className());
        QObject *parent = layout->parent();
        if (qobject_cast<QLayout *>(parent))
            m_lines << name + QStringLiteral(": ") + className + QStringLiteral(" in ")
                           + layoutName(static_cast<QLayout *>(parent));
        else
            m_lines << name + QStringLiteral(": ") + className + QStringLiteral(" of ")
                           + (parent ? parent->objectName() : QStringLiteral("nothing"));

        QWidget *owner = layout->parentWidget();
        add(name, "geometry", geometryText(layout, owner ? rectInWindow(owner, layout->geometry()) : QRect()));
        const QMargins margins = layout->contentsMargins();
        add(name, "margins",
            QStringLiteral("%1,%2,%3,%4")
                .arg(margins.left())
                .arg(margins.top())
                .arg(margins.right())
                .arg(margins.bottom()));
        add(name, "spacing", QString::number(layout->spacing()));
        addProperty(layout, "sizeConstraint");
        auto *box = qobject_cast<QBoxLayout *>(layout);
        if (box) {
            QStringList stretches;
            for (int i = 0; i < box->count(); ++i)
                stretches << QString::number(box->stretch(i));
            add(name, "stretch", stretches.join(','));
        }
        std::vector<QLayout *> nested;
        for (int i = 0; i < layout->count(); ++i) {
            QLayoutItem *item = layout->itemAt(i);
            QString text;
            QString spacerGeometry;
            if (QWidget *widget = item->widget()) {
                text = widget->objectName();
            } else if (QLayout *child = item->layout()) {
                text = layoutName(child);
                nested.push_back(child);
            } else if (QSpacerItem *spacer = item->spacerItem()) {
                text = QStringLiteral("spacer %1 %2")
                           .arg(sizeText(spacer->sizeHint()), sizePolicyText(spacer->sizePolicy()));
                spacerGeometry = geometryText(spacer, owner ? rectInWindow(owner, spacer->geometry()) : QRect());
            } else {
                text = QStringLiteral("(an item of another kind)");
            }
            if (item->alignment())
                text += QStringLiteral(", aligned ")
                        + enumText(QMetaEnum::fromType<Qt::Alignment>(), int(item->alignment()));
            if (auto *grid = qobject_cast<QGridLayout *>(layout)) {
                int row = 0, column = 0, rowSpan = 0, columnSpan = 0;
                grid->getItemPosition(i, &row, &column, &rowSpan, &columnSpan);
                text +=
                    QStringLiteral(", row %1 column %2 span %3x%4").arg(row).arg(column).arg(rowSpan).arg(columnSpan);
            }
            if (auto *form = qobject_cast<QFormLayout *>(layout)) {
                int row = 0;
                QFormLayout::ItemRole role = QFormLayout::LabelRole;
                form->getItemPosition(i, &row, &role);
                text += QStringLiteral(", row %1 %2")
                            .arg(row)
                            .arg(role == QFormLayout::LabelRole   ? "label"
                                 : role == QFormLayout::FieldRole ? "field"
                                                                  : "spanning");
            }
            add(name, "item", text);
            if (!spacerGeometry.isEmpty())
                add(name, "item.geometry", spacerGeometry);
        }
        for (QLayout *child : nested)
            describeLayout(child);
    }

    // The order Tab moves the focus in: the form's widgets that take focus by Tab, in
    // the focus chain from the window (what setupUi's setTabOrder calls made of it).
    // Qt's helpers in the chain (a tab bar's scroll buttons, a combo box's line edit)
    // are left out; a widget that hands its focus on (a tab widget to its tab bar) says so.
    void describeTabOrder(const std::vector<QWidget *> &widgets)
    {
        const QString name = m_window.objectName();
        for (QWidget *widget = m_window.nextInFocusChain(); widget && widget != &m_window;
             widget = widget->nextInFocusChain()) {
            if (!(widget->focusPolicy() & Qt::TabFocus)
                || std::find(widgets.begin(), widgets.end(), widget) == widgets.end())
                continue;
            QString text = widget->objectName();
            if (widget->focusProxy())
                text += QStringLiteral(", focus to ") + widget->focusProxy()->objectName();
            add(name, "tabOrder", text);
        }
    }

    QMainWindow &m_window;
    QStringList m_lines;
    QSize m_setUpWindowSize;
    QHash<const QWidget *, QPair<QSize, QSize>> m_setUpSizes;
    QHash<const void *, QRect> m_geometry;
};

// Delivers what showing or a tab change posted (layout requests, resizes), so the
// layouts have settled.
void settle()
{
    for (int round = 0; round < 3; ++round)
        QCoreApplication::processEvents();
}

// Whether a line's value follows from the fonts and the style: geometry, the sizes that
// showing changed ("(shown)") and icons the program drew from text ("(drawn)").
bool followsTheFonts(const QString &line)
{
    const int colon = line.indexOf(QLatin1String(": "));
    if (line.startsWith(QLatin1Char('#')) || colon < 0)
        return false;
    const QStringRef key = line.leftRef(colon);
    return key.endsWith(QLatin1String("geometry")) || key.endsWith(QLatin1String("(shown)"))
           || key.endsWith(QLatin1String("(drawn)"));
}

// One part of a record, each line with its number in the whole.
struct RecordPart
{
    QStringList lines;
    QVector<int> numbers;
};

RecordPart recordPart(const QStringList &lines, bool fontDependent)
{
    RecordPart part;
    for (int i = 0; i < lines.size(); ++i) {
        if (followsTheFonts(lines.at(i)) == fontDependent) {
            part.lines << lines.at(i);
            part.numbers << i + 1;
        }
    }
    return part;
}

// Line numbers from 1, as a file counts them.
QVector<int> countedLines(int count)
{
    QVector<int> numbers(count);
    for (int i = 0; i < count; ++i)
        numbers[i] = i + 1;
    return numbers;
}

// A unified diff of two lists of lines; the hunk headers give each line's number in its
// file, which for a part of a record is not its place in the list.
QString unifiedDiff(const QStringList &expected, const QVector<int> &expectedNumbers, const QStringList &actual,
                    const QVector<int> &actualNumbers, int context)
{
    const int expectedCount = expected.size();
    const int actualCount = actual.size();
    int prefix = 0;
    while (prefix < expectedCount && prefix < actualCount && expected.at(prefix) == actual.at(prefix))
        ++prefix;
    if (prefix == expectedCount && prefix == actualCount)
        return QString();
    int suffix = 0;
    while (suffix < expectedCount - prefix && suffix < actualCount - prefix
           && expected.at(expectedCount - 1 - suffix) == actual.at(actualCount - 1 - suffix))
        ++suffix;

    // The edit between the common start and end: the longest common subsequence of the
    // lines in between, or, for a change too large to search, all of them replaced.
    struct Step
    {
        char kind; // ' ' kept, '-' only expected, '+' only actual
        int expectedLine;
        int actualLine;
    };
    std::vector<Step> steps;
    for (int i = 0; i < prefix; ++i)
        steps.push_back({' ', i, i});
    const int n = expectedCount - prefix - suffix;
    const int m = actualCount - prefix - suffix;
    if (qint64(n) * m <= 16 * 1000 * 1000) {
        std::vector<int> common(size_t(n + 1) * size_t(m + 1), 0);
        const auto at = [&](int i, int j) -> int & { return common[size_t(i) * size_t(m + 1) + size_t(j)]; };
        for (int i = n - 1; i >= 0; --i) {
            for (int j = m - 1; j >= 0; --j)
                at(i, j) = expected.at(prefix + i) == actual.at(prefix + j) ? at(i + 1, j + 1) + 1
                                                                            : std::max(at(i + 1, j), at(i, j + 1));
        }
        int i = 0;
        int j = 0;
        while (i < n || j < m) {
            if (i < n && j < m && expected.at(prefix + i) == actual.at(prefix + j)) {
                steps.push_back({' ', prefix + i++, prefix + j++});
            } else if (j == m || (i < n && at(i + 1, j) >= at(i, j + 1))) {
                steps.push_back({'-', prefix + i++, prefix + j});
            } else {
                steps.push_back({'+', prefix + i, prefix + j++});
            }
        }
    } else {
        for (int i = 0; i < n; ++i)
            steps.push_back({'-', prefix + i, prefix});
        for (int j = 0; j < m; ++j)
            steps.push_back({'+', prefix + n, prefix + j});
    }
    for (int i = 0; i < suffix; ++i)
        steps.push_back({' ', expectedCount - suffix + i, actualCount - suffix + i});

    // Groups of changes with up to `context` kept lines around each, joined when they
    // would overlap.
    QStringList out;
    const int total = int(steps.size());
    int index = 0;
    while (index < total) {
        while (index < total && steps[size_t(index)].kind == ' ')
            ++index;
        if (index == total)
            break;
        const int start = std::max(0, index - context);
        int end = index; // one past the last change of the group
        int cursor = index;
        while (cursor < total) {
            if (steps[size_t(cursor)].kind != ' ') {
                end = ++cursor;
                continue;
            }
            int kept = cursor;
            while (kept < total && steps[size_t(kept)].kind == ' ')
                ++kept;
            if (kept == total || kept - cursor > 2 * context)
                break;
            cursor = kept;
        }
        const int stop = std::min(total, end + context);
        int expectedLines = 0;
        int actualLines = 0;
        for (int k = start; k < stop; ++k) {
            expectedLines += steps[size_t(k)].kind != '+';
            actualLines += steps[size_t(k)].kind != '-';
        }
        // As diff does, a side without lines in the group names the line before it.
        const Step &first = steps[size_t(start)];
        const auto number = [](const QVector<int> &numbers, int index, int count) {
            if (count)
                return numbers.value(index);
            return index > 0 ? numbers.value(index - 1) : 0;
        };
        out << QStringLiteral("@@ -%1,%2 +%3,%4 @@")
                   .arg(number(expectedNumbers, first.expectedLine, expectedLines))
                   .arg(expectedLines)
                   .arg(number(actualNumbers, first.actualLine, actualLines))
                   .arg(actualLines);
        for (int k = start; k < stop; ++k) {
            const Step &step = steps[size_t(k)];
            const QString &line = step.kind == '+' ? actual.at(step.actualLine) : expected.at(step.expectedLine);
            out << QLatin1Char(step.kind) + line;
        }
        index = stop;
    }
    return out.join(QLatin1Char('\n'));
}

// The differences of one part of two records, at most kMaxLines lines of them.
QString partDifferences(const QStringList &expected, const QStringList &actual, bool fontDependent)
{
    const RecordPart expectedPart = recordPart(expected, fontDependent);
    const RecordPart actualPart = recordPart(actual, fontDependent);
    const QString differences =
        unifiedDiff(expectedPart.lines, expectedPart.numbers, actualPart.lines, actualPart.numbers, 3);
    QStringList lines = differences.split(QLatin1Char('\n'));
    const int kMaxLines = 500;
    if (lines.size() > kMaxLines) {
        const int more = lines.size() - kMaxLines;
        lines = lines.mid(0, kMaxLines);
        lines << QStringLiteral("... and %1 lines more").arg(more);
    }
    return differences.isEmpty() ? QString() : lines.join(QLatin1Char('\n'));
}

} // namespace

QStringList formDumpLines()
{
    QMainWindow window;
    Ui::MainWindow ui;
    ui.setupUi(&window);
    std::vector<QWidget *> widgets;
    collectWidgets(&window, widgets);
    FormDump dump(window);
    dump.noteSetUpSizes(widgets);
    // The size the program's window first has, whatever the form's own (noted above).
    window.resize(720, 470);

    window.show();
    settle();
    dump.noteGeometry(widgets);
    for (QWidget *widget : widgets) {
        auto *tabs = qobject_cast<QTabWidget *>(widget);
        if (!tabs)
            continue;
        const int current = tabs->currentIndex();
        for (int i = 0; i < tabs->count(); ++i) {
            tabs->setCurrentIndex(i);
            settle();
            dump.noteGeometry(widgets);
        }
        tabs->setCurrentIndex(current);
        settle();
    }
    dump.describe(widgets);
    window.hide();
    return dump.lines();
}

// Qt's own helpers inside a widget (a tab widget's stack and tab bar, a scroll area's
// viewport) are unnamed or named "qt_..."; the tab bar's scroll buttons are named but
// the tab bar's own.
bool isFormWidget(const QWidget *widget)
{
    const QString name = widget->objectName();
    if (name.isEmpty() || name.startsWith(QLatin1String("qt_")))
        return false;
    return !qobject_cast<const QTabBar *>(widget->parentWidget());
}

QString formDumpReport(const QStringList &expected, const QStringList &actual, bool withFontDependentLines)
{
    // A layout change moves most of what lies below it, so the geometry goes after what
    // the change did to the form's own values, in a list of its own.
    const QString own = partDifferences(expected, actual, false);
    const QString laidOut = withFontDependentLines ? partDifferences(expected, actual, true) : QString();
    if (own.isEmpty() && laidOut.isEmpty())
        return QString();
    QString report = QStringLiteral("- the file, + the form.\nApart from what follows the fonts (geometry, sizes "
                                    "once shown, drawn icons):\n")
                     + (own.isEmpty() ? QStringLiteral("(no difference)") : own);
    if (withFontDependentLines)
        report += QStringLiteral("\nWhat follows the fonts:\n")
                  + (laidOut.isEmpty() ? QStringLiteral("(no difference)") : laidOut);
    else
        report += QStringLiteral("\n(What follows the fonts is left out here: this platform's fonts and style "
                                 "differ from those of the record.)");
    return report;
}

QString checkedInFormDumpPath()
{
    return QStringLiteral(FB_TESTS_DIR "/form/data/mainwindow.dump");
}

bool readFormDump(const QString &path, QStringList *lines, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("cannot read %1: %2").arg(path, file.errorString());
        return false;
    }
    QString text = QString::fromUtf8(file.readAll());
    // A checkout with Windows line ends reads the same.
    text.remove(QLatin1Char('\r'));
    if (text.endsWith(QLatin1Char('\n')))
        text.chop(1);
    *lines = text.split(QLatin1Char('\n'));
    return true;
}

bool writeFormDump(const QString &path, const QStringList &lines, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        *error = QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
        return false;
    }
    const QByteArray text = (lines.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8();
    if (file.write(text) != text.size() || !file.flush()) {
        *error = QStringLiteral("cannot write %1: %2").arg(path, file.errorString());
        return false;
    }
    return true;
}

QString formDumpDifferences(const QStringList &expected, const QStringList &actual, int context)
{
    return unifiedDiff(expected, countedLines(expected.size()), actual, countedLines(actual.size()), context);
}

QString quotedForDump(const QString &text)
{
    QString out = QStringLiteral("\"");
    const QVector<uint> codePoints = text.toUcs4();
    for (const uint c : codePoints) {
        switch (c) {
        case '\\':
            out += QStringLiteral("\\\\");
            break;
        case '"':
            out += QStringLiteral("\\\"");
            break;
        case '\n':
            out += QStringLiteral("\\n");
            break;
        case '\r':
            out += QStringLiteral("\\r");
            break;
        case '\t':
            out += QStringLiteral("\\t");
            break;
        default:
            if (c < 0x20 || c == 0x7f)
                out +=
                    QStringLiteral("\\x{%1}").arg(QString::number(c, 16).toUpper().rightJustified(2, QLatin1Char('0')));
            else if (c > 0x7f)
                out += QStringLiteral("\\u{%1}").arg(QString::number(c, 16).toUpper());
            else
                out += QChar(char16_t(c));
        }
    }
    return out + QLatin1Char('"');
}
