// The region capture overlay full screen on a 1920 x 1080 display: plain and enhanced
// selection, grab zones, size label, cursors, keys. It shows a known picture and is
// driven by events sent to it, and at the end by real pointer input through the window
// system (the X server, or Windows), which Qt delivers to the band whenever the
// pointer is over it.
#include "attachments/capturegeometry.h"
#include "attachments/rubberbandenhanced.h"
#include "attachments/screenshot.h"
#include "capturetesting.h"
#include "realinput.h"
#include "support/testenv.h"

#include <QApplication>
#include <QCursor>
#include <QFontMetrics>
#include <QScreen>
#include <QPixmap>
#include <QtTest>

#include <memory>

using namespace CaptureTesting;
using CaptureGeometry::NoZone;
using CaptureGeometry::SizeLabel;

namespace {

const QRect kScreen(0, 0, 1920, 1080);
const QRgb kDarkCyan = QColor(Qt::darkCyan).rgb();
const QRgb kCyan = QColor(Qt::cyan).rgb();
const QRgb kWhite = QColor(Qt::white).rgb();
const QRgb kBlack = QColor(Qt::black).rgb();

const QPixmap &patternPixmap()
{
    static const QPixmap pixmap = QPixmap::fromImage(patternImage(kScreen));
    return pixmap;
}

std::unique_ptr<ScreenShot> showOverlay(bool enhanced)
{
    auto overlay = std::make_unique<ScreenShot>(enhanced);
    overlay->setBackground(patternPixmap());
    overlay->setScreenGeometry(kScreen);
    overlay->setMouseTracking(true); // as capture() does
    overlay->showFullScreen();
    if (!QTest::qWaitForWindowExposed(overlay.get(), kEventWaitMs))
        qWarning("the overlay was not exposed");
    // The band finds its zones from global points: the overlay must sit on the screen.
    if (!QTest::qWaitFor([&] { return overlay->mapToGlobal(QPoint(0, 0)) == kScreen.topLeft(); }, kEventWaitMs))
        qWarning("the overlay is not at the screen's origin");
    return overlay;
}

RubberBandEnhanced *bandOf(const ScreenShot &overlay)
{
    return qobject_cast<RubberBandEnhanced *>(overlay.rubberBand());
}

// A selection whose band is exactly `rect`, made with the left button.
void select(ScreenShot &overlay, const QRect &rect)
{
    press(&overlay, rect.topLeft());
    drag(&overlay, rect.bottomRight());
    if (!overlay.isEnhanced())
        return;
    release(&overlay, rect.bottomRight());
    // Paint now so that the band's zones are laid out, as the screen would.
    overlay.rubberBand()->repaint();
}

// The same selection made with the real pointer on the active overlay; true once the
// band shows exactly `rect`.
bool selectWithRealPointer(ScreenShot &overlay, const QRect &rect)
{
    const QPoint from = rect.topLeft();
    const QPoint to = rect.bottomRight();
    return QTest::qWaitFor([&] { return overlay.isActiveWindow(); }, kEventWaitMs)
           && RealInput().moveTo(from).press().moveTo(to).release().run()
           && QTest::qWaitFor([&] { return overlay.rubberBand()->geometry() == rect; }, kEventWaitMs);
}

QString zonesLaidOut(const RubberBandEnhanced &band)
{
    QString zones;
    for (int zone = 0; zone < CaptureGeometry::kZoneCount; ++zone) {
        if (!band.zoneRect(zone).isNull())
            zones += QString::number(zone);
    }
    return zones;
}

bool containsColour(const QImage &image, const QRect &area, QRgb colour)
{
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (image.pixel(x, y) == colour)
                return true;
        }
    }
    return false;
}

} // namespace

class TestScreenShot : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QCOMPARE(QGuiApplication::primaryScreen()->geometry(), kScreen);
        QCOMPARE(patternPixmap().size(), kScreen.size());
        // Keep the real pointer away from every selection these tests make.
        QCursor::setPos(kScreen.bottomRight());
    }

    void bandKindsAndToolTip()
    {
        ScreenShot enhanced(true);
        RubberBandEnhanced *band = bandOf(enhanced);
        QVERIFY(band);
        QCOMPARE(band->parentWidget(), &enhanced);
        QCOMPARE(band->shape(), QRubberBand::Rectangle);
        QCOMPARE(band->toolTip(), QString("LMB: Start a new selection\nRMB: Accept capture"));
        QVERIFY(band->isHidden());
        QVERIFY(band->bounds().isNull());
        QVERIFY(!band->testAttribute(Qt::WA_TransparentForMouseEvents));
        QVERIFY(band->hasMouseTracking());
        for (int zone = 0; zone < CaptureGeometry::kZoneCount; ++zone) {
            QCOMPARE(band->zoneRect(zone), QRect(QPoint(0, 0), QPoint(-1, -1)));
            QVERIFY(!band->zoneHovered(zone));
        }
        enhanced.setScreenGeometry(QRect(1920, 0, 1280, 1024));
        QCOMPARE(band->bounds(), QRect(1920, 0, 1280, 1024));
        QCOMPARE(enhanced.geometry(), QRect(1920, 0, 1280, 1024));
        QCOMPARE(enhanced.activeZone(), int(NoZone));
        QVERIFY(enhanced.parentWidget() == nullptr);
        QCOMPARE(enhanced.windowFlags(), QWidget().windowFlags());

        ScreenShot plain(false);
        QVERIFY(plain.rubberBand());
        QVERIFY(!bandOf(plain));
        QCOMPARE(plain.rubberBand()->parentWidget(), &plain);
        QCOMPARE(plain.rubberBand()->shape(), QRubberBand::Rectangle);
        QCOMPARE(plain.rubberBand()->toolTip(), QString());
    }

    void nullScreenGivesNoPictureAtOnce()
    {
        ScreenShot overlay(true);
        QVERIFY(overlay.capture(nullptr).isNull());
        QVERIFY(overlay.isHidden());
        QVERIFY(overlay.background().isNull());
    }

    void paintsThePictureUnchanged()
    {
        auto overlay = showOverlay(true);
        QCOMPARE(overlay->grab().toImage().convertToFormat(QImage::Format_RGB32),
                 patternPixmap().toImage().convertToFormat(QImage::Format_RGB32));
    }

    void escapeEndsWithNoPicture_data()
    {
        QTest::addColumn<bool>("enhanced");
        QTest::newRow("plain") << false;
        QTest::newRow("enhanced") << true;
    }

    void escapeEndsWithNoPicture()
    {
        QFETCH(bool, enhanced);
        auto overlay = showOverlay(enhanced);
        press(overlay.get(), QPoint(100, 100));
        drag(overlay.get(), QPoint(300, 200));
        QVERIFY(overlay->isSelecting());
        QVERIFY(!overlay->rubberBand()->isHidden());
        QVERIFY(!key(overlay.get(), Qt::Key_Escape)); // passed on to QWidget, which ignores it
        QVERIFY(overlay->hasEnded());
        QVERIFY(overlay->result().isNull());
        QVERIFY(overlay->rubberBand()->isHidden());
        QVERIFY(!overlay->isSelecting());
    }

    void escapeWithoutSelectionEnds()
    {
        auto overlay = showOverlay(false);
        key(overlay.get(), Qt::Key_Escape);
        QVERIFY(overlay->hasEnded());
        QVERIFY(overlay->result().isNull());
    }

    void otherKeysDoNotEnd()
    {
        auto overlay = showOverlay(false);
        QVERIFY(!key(overlay.get(), Qt::Key_Return));
        QVERIFY(!key(overlay.get(), Qt::Key_Space));
        QVERIFY(!overlay->hasEnded());
    }

    void plainDragAndReleaseKeepsThePart()
    {
        auto overlay = showOverlay(false);
        press(overlay.get(), QPoint(100, 100));
        QCOMPARE(overlay->activeZone(), int(NoZone));
        QVERIFY(!overlay->rubberBand()->isHidden());
        QVERIFY(overlay->isSelecting());
        drag(overlay.get(), QPoint(300, 250));
        QCOMPARE(overlay->rubberBand()->geometry(), QRect(100, 100, 201, 151));
        QVERIFY(!overlay->hasEnded());
        release(overlay.get(), QPoint(300, 250));
        QVERIFY(overlay->hasEnded());
        QVERIFY(overlay->rubberBand()->isHidden());
        QVERIFY(!overlay->isSelecting());
        QCOMPARE(patternMismatch(overlay->result().toImage(), QRect(100, 100, 200, 150)), QString());
    }

    void plainDragUpwardsLeftNormalisesTheBand()
    {
        auto overlay = showOverlay(false);
        press(overlay.get(), QPoint(300, 250));
        drag(overlay.get(), QPoint(100, 100));
        QCOMPARE(overlay->rubberBand()->geometry(), QRect(100, 100, 201, 151));
        drag(overlay.get(), QPoint(150, 120));
        QCOMPARE(overlay->rubberBand()->geometry(), QRect(150, 120, 151, 131));
    }

    // The kept rectangle runs from the press to the release, not normalised: towards
    // the upper left it is empty, and an empty rectangle copies the whole picture.
    void plainUpperLeftDragGivesTheWholePicture()
    {
        auto overlay = showOverlay(false);
        leftDrag(overlay.get(), QPoint(300, 250), QPoint(100, 100));
        QVERIFY(overlay->hasEnded());
        QCOMPARE(patternMismatch(overlay->result().toImage(), kScreen), QString());
    }

    void plainClickWithoutDragEndsWithNoPicture()
    {
        auto overlay = showOverlay(false);
        press(overlay.get(), QPoint(400, 300));
        release(overlay.get(), QPoint(400, 300));
        QVERIFY(overlay->hasEnded());
        QVERIFY(overlay->result().isNull());
        QVERIFY(overlay->rubberBand()->isHidden());
    }

    void plainDragBackToThePressPointEndsWithNoPicture()
    {
        auto overlay = showOverlay(false);
        press(overlay.get(), QPoint(400, 300));
        drag(overlay.get(), QPoint(500, 400));
        drag(overlay.get(), QPoint(400, 300));
        release(overlay.get(), QPoint(400, 300));
        QVERIFY(overlay->hasEnded());
        QVERIFY(overlay->result().isNull());
    }

    void plainRightButtonCancels_data()
    {
        QTest::addColumn<bool>("withSelection");
        QTest::newRow("with a selection") << true;
        QTest::newRow("without") << false;
    }

    void plainRightButtonCancels()
    {
        QFETCH(bool, withSelection);
        auto overlay = showOverlay(false);
        if (withSelection) {
            press(overlay.get(), QPoint(100, 100));
            drag(overlay.get(), QPoint(300, 250));
        }
        press(overlay.get(), QPoint(300, 250), Qt::RightButton);
        QVERIFY(overlay->hasEnded());
        QVERIFY(overlay->result().isNull());
        QVERIFY(overlay->rubberBand()->isHidden());
        QVERIFY(!overlay->isSelecting());
    }

    void plainArrowKeysDoNotMoveTheBand()
    {
        auto overlay = showOverlay(false);
        press(overlay.get(), QPoint(100, 100));
        drag(overlay.get(), QPoint(300, 250));
        key(overlay.get(), Qt::Key_Right);
        key(overlay.get(), Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(overlay->rubberBand()->geometry(), QRect(100, 100, 201, 151));
    }

    void otherButtonsAreIgnored()
    {
        auto overlay = showOverlay(true);
        press(overlay.get(), QPoint(100, 100), Qt::MiddleButton);
        QVERIFY(!overlay->hasEnded());
        QVERIFY(!overlay->isSelecting());
        QVERIFY(overlay->rubberBand()->isHidden());
    }

    void pressStartsAnEmptyBandAtThePoint()
    {
        auto overlay = showOverlay(true);
        press(overlay.get(), QPoint(640, 480));
        QVERIFY(overlay->isSelecting());
        QVERIFY(!overlay->rubberBand()->isHidden());
        QCOMPARE(overlay->rubberBand()->geometry().topLeft(), QPoint(640, 480));
        QVERIFY(overlay->rubberBand()->geometry().isEmpty());
        QCOMPARE(overlay->activeZone(), int(NoZone));
    }

    void enhancedLeftReleaseDoesNotEnd()
    {
        auto overlay = showOverlay(true);
        leftDrag(overlay.get(), QPoint(100, 100), QPoint(300, 250));
        QVERIFY(!overlay->hasEnded());
        QVERIFY(overlay->isSelecting());
        QVERIFY(!overlay->rubberBand()->isHidden());
        QCOMPARE(overlay->rubberBand()->geometry(), QRect(100, 100, 201, 151));
        QVERIFY(overlay->result().isNull());
    }

    void enhancedRightClickKeepsTheSelection()
    {
        auto overlay = showOverlay(true);
        leftDrag(overlay.get(), QPoint(100, 100), QPoint(300, 250));
        press(overlay.get(), QPoint(1000, 900), Qt::RightButton);
        QVERIFY(overlay->hasEnded());
        QVERIFY(overlay->rubberBand()->isHidden());
        QVERIFY(!overlay->isSelecting());
        QCOMPARE(patternMismatch(overlay->result().toImage(), QRect(100, 100, 201, 151)), QString());
    }

    void enhancedRightClickWithoutSelectionCancels()
    {
        auto overlay = showOverlay(true);
        press(overlay.get(), QPoint(500, 500), Qt::RightButton);
        QVERIFY(overlay->hasEnded());
        QVERIFY(overlay->result().isNull());
    }

    void enhancedRightClickAfterEscapeOfTheBandCancels()
    {
        auto overlay = showOverlay(true);
        leftDrag(overlay.get(), QPoint(100, 100), QPoint(300, 250));
        key(overlay.get(), Qt::Key_Escape);
        QVERIFY(overlay->hasEnded());
        press(overlay.get(), QPoint(500, 500), Qt::RightButton);
        QVERIFY(overlay->result().isNull());
    }

    // On 1920 x 1080 the handles are 10 x 9: none up to 20 x 18, the corners from
    // 21 x 19, the edge middles too from 31 x 28.
    void handlesOnFullHd_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QString>("zones");
        QTest::newRow("20x18") << QSize(20, 18) << "";
        QTest::newRow("21x19") << QSize(21, 19) << "0246";
        QTest::newRow("30x27") << QSize(30, 27) << "0246";
        QTest::newRow("31x28") << QSize(31, 28) << "01234567";
    }

    void handlesOnFullHd()
    {
        QFETCH(QSize, size);
        QFETCH(QString, zones);
        auto overlay = showOverlay(true);
        select(*overlay, QRect(QPoint(500, 400), size));
        RubberBandEnhanced *band = bandOf(*overlay);
        QCOMPARE(band->geometry(), QRect(QPoint(500, 400), size));
        QCOMPARE(zonesLaidOut(*band), zones);

        const QImage image = band->grab().toImage().convertToFormat(QImage::Format_RGB32);
        // Inside each handle: dark cyan (none is hovered); the outline is black.
        const QList<QPoint> insides{{5, 4},
                                    {size.width() / 2, 4},
                                    {size.width() - 5, 4},
                                    {size.width() - 5, size.height() / 2},
                                    {size.width() - 5, size.height() - 5},
                                    {size.width() / 2, size.height() - 5},
                                    {5, size.height() - 5},
                                    {5, size.height() / 2}};
        for (int zone = 0; zone < 8; ++zone) {
            const bool shown = zones.contains(QString::number(zone));
            QCOMPARE((image.pixel(insides[zone]) == kDarkCyan), shown);
        }
        if (!zones.isEmpty())
            QCOMPARE(image.pixel(0, 0), kBlack);
    }

    // The label shows only when the band is wider than 20 + the text's bounding width
    // and higher than 18 + its bounding height.
    void labelNeedsRoomForTheText_data()
    {
        QTest::addColumn<bool>("growWidth");
        QTest::newRow("width") << true;
        QTest::newRow("height") << false;
    }

    void labelNeedsRoomForTheText()
    {
        QFETCH(bool, growWidth);
        ScreenShot probe(true);
        const QFontMetrics metrics(probe.rubberBand()->font(), probe.rubberBand());
        // The first size at which the label fits, with the other side roomy.
        int threshold = 0;
        for (int side = 20; side < 400 && threshold == 0; ++side) {
            const QSize size = growWidth ? QSize(side, 300) : QSize(300, side);
            const QRect text = metrics.boundingRect(CaptureGeometry::sizeLabelText(size));
            const bool fits = growWidth ? side > 20 + text.width() : side > 18 + text.height();
            if (fits)
                threshold = side;
        }
        QVERIFY(threshold > 0);

        for (int side : {threshold - 1, threshold}) {
            const QSize size = growWidth ? QSize(side, 300) : QSize(300, side);
            auto overlay = showOverlay(true);
            select(*overlay, QRect(QPoint(200, 100), size));
            RubberBandEnhanced *band = bandOf(*overlay);
            const bool shown = side == threshold;
            QCOMPARE(!band->zoneRect(SizeLabel).isNull(), shown);
            if (!shown)
                continue;
            const QRect text = metrics.boundingRect(CaptureGeometry::sizeLabelText(size));
            const int tw = text.width() - 1;
            const int th = text.height() - 1;
            const int left = size.width() / 2 - (tw + 1) / 2 - 3;
            const int top = size.height() / 2 - (th + 1) / 2 - 3;
            QCOMPARE(band->zoneRect(SizeLabel), QRect(QPoint(left, top), QPoint(left + 6 + tw, top + 6 + th)));
            const QImage image = band->grab().toImage().convertToFormat(QImage::Format_RGB32);
            const QRect box = band->zoneRect(SizeLabel);
            QCOMPARE(image.pixel(box.left() + 1, box.top() + 1), kDarkCyan);
            QCOMPARE(image.pixel(box.topLeft()), kBlack);
            QVERIFY(containsColour(image, box.adjusted(3, 3, -3, -3), kWhite));
        }
    }

    void hoveringZonesSetsCursorAndColour()
    {
        auto overlay = showOverlay(true);
        const QRect selection(100, 100, 300, 200);
        select(*overlay, selection);
        RubberBandEnhanced *band = bandOf(*overlay);
        QCOMPARE(zonesLaidOut(*band), QString("012345678"));

        for (int zone = 0; zone <= SizeLabel; ++zone) {
            const QPoint centre = band->zoneRect(zone).center() + selection.topLeft();
            hover(overlay.get(), centre);
            QCOMPARE(overlay->activeZone(), zone);
            QVERIFY(band->zoneHovered(zone));
            QCOMPARE(band->cursor().shape(), CaptureGeometry::zoneCursor(zone));
        }
        const QImage hovered = band->grab().toImage().convertToFormat(QImage::Format_RGB32);
        const QRect label = band->zoneRect(SizeLabel);
        QCOMPARE(hovered.pixel(label.left() + 1, label.top() + 1), kCyan);
        QVERIFY(!containsColour(hovered, label.adjusted(3, 3, -3, -3), kWhite));
        QCOMPARE(hovered.pixel(band->zoneRect(0).center()), kDarkCyan);

        // Inside the band but on no zone, and outside it: no zone, the cross.
        hover(overlay.get(), QPoint(150, 200));
        QCOMPARE(overlay->activeZone(), int(NoZone));
        QCOMPARE(band->cursor().shape(), Qt::CrossCursor);
        hover(overlay.get(), QPoint(1000, 900));
        QCOMPARE(overlay->activeZone(), int(NoZone));
        for (int zone = 0; zone <= SizeLabel; ++zone)
            QVERIFY(!band->zoneHovered(zone));
    }

    // The corner handle overlaps the edge handles of a small band; the highest wins.
    void overlappingZonesGiveTheHighest()
    {
        auto overlay = showOverlay(true);
        select(*overlay, QRect(100, 100, 31, 28));
        RubberBandEnhanced *band = bandOf(*overlay);
        // Zone 0 spans x 0..9, zone 1 x 10..19 and rows 0..8; zone 7 rows 9..17.
        hover(overlay.get(), QPoint(105, 109));
        QCOMPARE(overlay->activeZone(), 7);
        QVERIFY(band->zoneHovered(7));
        QVERIFY(!band->zoneHovered(0));
        hover(overlay.get(), QPoint(105, 108));
        QCOMPARE(overlay->activeZone(), 0);
    }

    void draggingTheLabelMovesTheSelection()
    {
        auto overlay = showOverlay(true);
        const QRect selection(100, 100, 300, 200);
        select(*overlay, selection);
        RubberBandEnhanced *band = bandOf(*overlay);
        const QPoint label = band->zoneRect(SizeLabel).center() + selection.topLeft();

        press(overlay.get(), label);
        QCOMPARE(overlay->activeZone(), int(SizeLabel));
        QVERIFY(!band->isHidden());
        for (const QPoint &to : {QPoint(700, 500), QPoint(900, 300), QPoint(1200, 800)}) {
            drag(overlay.get(), to);
            QCOMPARE(band->geometry().center(), to);
            QCOMPARE(band->geometry().size(), selection.size());
        }
        release(overlay.get(), QPoint(1200, 800));
        QVERIFY(!overlay->hasEnded());
        QCOMPARE(band->geometry(), QRect(1051, 701, 300, 200));
        press(overlay.get(), QPoint(10, 10), Qt::RightButton);
        QCOMPARE(patternMismatch(overlay->result().toImage(), QRect(1051, 701, 300, 200)), QString());
    }

    void draggingAHandleResizes_data()
    {
        QTest::addColumn<int>("zone");
        QTest::addColumn<QPoint>("to");
        QTest::addColumn<QRect>("rect");
        // The selection is x 100..399, y 100..299.
        QTest::newRow("0 top-left") << 0 << QPoint(50, 60) << QRect(50, 60, 350, 240);
        QTest::newRow("1 top") << 1 << QPoint(50, 60) << QRect(100, 60, 300, 240);
        QTest::newRow("2 top-right") << 2 << QPoint(500, 60) << QRect(100, 60, 401, 240);
        QTest::newRow("3 right") << 3 << QPoint(500, 60) << QRect(100, 100, 401, 200);
        QTest::newRow("4 bottom-right") << 4 << QPoint(500, 400) << QRect(100, 100, 401, 301);
        QTest::newRow("5 bottom") << 5 << QPoint(500, 400) << QRect(100, 100, 300, 301);
        QTest::newRow("6 bottom-left") << 6 << QPoint(50, 400) << QRect(50, 100, 350, 301);
        QTest::newRow("7 left") << 7 << QPoint(50, 400) << QRect(50, 100, 350, 200);
        QTest::newRow("7 left past the right edge") << 7 << QPoint(450, 400) << QRect(399, 100, 52, 200);
    }

    void draggingAHandleResizes()
    {
        QFETCH(int, zone);
        QFETCH(QPoint, to);
        QFETCH(QRect, rect);
        auto overlay = showOverlay(true);
        const QRect selection(100, 100, 300, 200);
        select(*overlay, selection);
        RubberBandEnhanced *band = bandOf(*overlay);
        press(overlay.get(), band->zoneRect(zone).center() + selection.topLeft());
        QCOMPARE(overlay->activeZone(), zone);
        drag(overlay.get(), to);
        QCOMPARE(band->geometry(), rect);
        release(overlay.get(), to);
        QVERIFY(!overlay->hasEnded());
    }

    void pressInsideTheBandOffTheZonesStartsAgain()
    {
        auto overlay = showOverlay(true);
        select(*overlay, QRect(100, 100, 300, 200));
        press(overlay.get(), QPoint(150, 200));
        QCOMPARE(overlay->activeZone(), int(NoZone));
        QVERIFY(!overlay->rubberBand()->isHidden());
        QCOMPARE(overlay->rubberBand()->geometry().topLeft(), QPoint(150, 200));
        QVERIFY(overlay->rubberBand()->geometry().isEmpty());
        drag(overlay.get(), QPoint(250, 260));
        QCOMPARE(overlay->rubberBand()->geometry(), QRect(150, 200, 101, 61));
    }

    void pressOutsideTheBandStartsAgain()
    {
        auto overlay = showOverlay(true);
        select(*overlay, QRect(100, 100, 300, 200));
        press(overlay.get(), QPoint(800, 700));
        QCOMPARE(overlay->rubberBand()->geometry().topLeft(), QPoint(800, 700));
        QVERIFY(overlay->rubberBand()->geometry().isEmpty());
        drag(overlay.get(), QPoint(700, 600));
        QCOMPARE(overlay->rubberBand()->geometry(), QRect(700, 600, 101, 101));
        QVERIFY(overlay->isSelecting());
    }

    void arrowsMoveAndShiftArrowsResize()
    {
        auto overlay = showOverlay(true);
        select(*overlay, QRect(100, 100, 300, 200));
        QRubberBand *band = overlay->rubberBand();
        QVERIFY(!key(overlay.get(), Qt::Key_Right)); // still passed on to QWidget
        QCOMPARE(band->geometry(), QRect(101, 100, 300, 200));
        key(overlay.get(), Qt::Key_Down);
        key(overlay.get(), Qt::Key_Down);
        QCOMPARE(band->geometry(), QRect(101, 102, 300, 200));
        key(overlay.get(), Qt::Key_Left);
        key(overlay.get(), Qt::Key_Up);
        QCOMPARE(band->geometry(), QRect(100, 101, 300, 200));
        QVERIFY(!key(overlay.get(), Qt::Key_Right, Qt::ShiftModifier));
        QCOMPARE(band->geometry(), QRect(100, 101, 301, 200));
        key(overlay.get(), Qt::Key_Up, Qt::ShiftModifier);
        QCOMPARE(band->geometry(), QRect(100, 101, 301, 199));
        key(overlay.get(), Qt::Key_Left, Qt::ShiftModifier);
        key(overlay.get(), Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(band->geometry(), QRect(100, 101, 300, 200));
        QVERIFY(!overlay->hasEnded());
        press(overlay.get(), QPoint(10, 10), Qt::RightButton);
        QCOMPARE(patternMismatch(overlay->result().toImage(), QRect(100, 101, 300, 200)), QString());
    }

    void arrowsStopAtTheScreenEdges()
    {
        auto overlay = showOverlay(true);
        select(*overlay, QRect(1, 1, 50, 40));
        QRubberBand *band = overlay->rubberBand();
        for (int i = 0; i < 3; ++i) {
            key(overlay.get(), Qt::Key_Left);
            key(overlay.get(), Qt::Key_Up);
        }
        QCOMPARE(band->geometry(), QRect(0, 0, 50, 40));
        select(*overlay, QRect(1800, 1000, 118, 78));
        for (int i = 0; i < 3; ++i) {
            key(overlay.get(), Qt::Key_Right, Qt::ShiftModifier);
            key(overlay.get(), Qt::Key_Down, Qt::ShiftModifier);
        }
        QCOMPARE(band->geometry(), QRect(1800, 1000, 120, 80));
        for (int i = 0; i < 3; ++i) {
            key(overlay.get(), Qt::Key_Right);
            key(overlay.get(), Qt::Key_Down);
        }
        QCOMPARE(band->geometry(), QRect(1800, 1000, 120, 80));
    }

    void arrowsWithoutSelectionDoNothing()
    {
        auto overlay = showOverlay(true);
        QVERIFY(!key(overlay.get(), Qt::Key_Right));
        QVERIFY(overlay->rubberBand()->isHidden());
        QVERIFY(!overlay->isSelecting());
        QVERIFY(!overlay->hasEnded());
    }

    // The pointer over the band: its zones light up and set the cursor as they do
    // over the overlay.
    void realPointerHoversTheZones()
    {
        auto overlay = showOverlay(true);
        RubberBandEnhanced *band = bandOf(*overlay);
        const QRect selection(100, 100, 300, 200);
        QVERIFY(selectWithRealPointer(*overlay, selection));
        QVERIFY(QTest::qWaitFor([&] { return zonesLaidOut(*band) == "012345678"; }, kEventWaitMs));

        for (int zone : {int(CaptureGeometry::TopLeft), int(CaptureGeometry::Right), int(SizeLabel)}) {
            const QPoint centre = band->zoneRect(zone).center() + selection.topLeft();
            QVERIFY(RealInput().moveTo(centre).run());
            QVERIFY2(QTest::qWaitFor([&] { return band->zoneHovered(zone); }, kEventWaitMs),
                     qPrintable(QString::number(zone)));
            QCOMPARE(overlay->activeZone(), zone);
            QCOMPARE(band->cursor().shape(), CaptureGeometry::zoneCursor(zone));
        }
        QVERIFY(RealInput().moveTo({150, 200}).run());
        QVERIFY(QTest::qWaitFor([&] { return overlay->activeZone() == int(NoZone); }, kEventWaitMs));
        QCOMPARE(band->cursor().shape(), Qt::CrossCursor);
        for (int zone = 0; zone <= SizeLabel; ++zone)
            QVERIFY(!band->zoneHovered(zone));
        QVERIFY(RealInput().moveTo({1900, 1060}).run());
    }

    // A press inside the band off its zones starts a new selection there, and the
    // drag that follows grows it; the right button keeps it.
    void realPointerRestartsInsideTheBand()
    {
        auto overlay = showOverlay(true);
        RubberBandEnhanced *band = bandOf(*overlay);
        QVERIFY(selectWithRealPointer(*overlay, QRect(100, 100, 300, 200)));

        QVERIFY(RealInput().moveTo({150, 200}).press().moveTo({200, 230}).moveTo({250, 260}).release().run());
        QVERIFY(QTest::qWaitFor([&] { return band->geometry() == QRect(150, 200, 101, 61); }, kEventWaitMs));
        QVERIFY(band->isVisible());
        QVERIFY(overlay->isSelecting());
        QVERIFY(!overlay->hasEnded());

        QVERIFY(RealInput().click(Qt::RightButton).run());
        QVERIFY(QTest::qWaitFor([&] { return overlay->hasEnded(); }, kEventWaitMs));
        QCOMPARE(patternMismatch(overlay->result().toImage(), QRect(150, 200, 101, 61)), QString());
        QVERIFY(RealInput().moveTo({1900, 1060}).run());
    }
};

FB_TEST_MAIN(TestScreenShot)
#include "tst_screenshot.moc"
