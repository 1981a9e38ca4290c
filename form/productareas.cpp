#include "form/productareas.h"

#include <QObject>

namespace {

// Nearly alphabetical on purpose: the list grew over releases and "Other" closes it.
// Translated here, before any translator is installed: the source-language names
// (see productareas.h). The .ts files still list them for translators.
// Three names to a row, in columns, so that the order reads at a glance.
// clang-format off
const QString kAreas[] = {
    QObject::tr("Animation"),          QObject::tr("Asset Browser"),      QObject::tr("Audio"),
    QObject::tr("Cameras"),            QObject::tr("Cloth Simulation"),   QObject::tr("Content Library"),
    QObject::tr("Crashes / Hangs"),    QObject::tr("Documentation"),      QObject::tr("Dynamics"),
    QObject::tr("Export"),             QObject::tr("Fur and Hair"),       QObject::tr("Geometry Editing"),
    QObject::tr("Import"),             QObject::tr("Installation"),       QObject::tr("Interface"),
    QObject::tr("Keyframes"),          QObject::tr("Licensing"),          QObject::tr("Lights"),
    QObject::tr("Materials"),          QObject::tr("Modeling"),           QObject::tr("Morphs"),
    QObject::tr("Motion Capture"),     QObject::tr("Network Rendering"),  QObject::tr("Node Editor"),
    QObject::tr("Particles"),          QObject::tr("Performance"),        QObject::tr("Physics"),
    QObject::tr("Plug-ins"),           QObject::tr("Posing"),             QObject::tr("Python Scripting"),
    QObject::tr("Render Settings"),    QObject::tr("Rendering"),          QObject::tr("Rigging"),
    QObject::tr("Scene Management"),   QObject::tr("Sculpting"),          QObject::tr("Shaders"),
    QObject::tr("Skinning"),           QObject::tr("Terrain"),            QObject::tr("Textures"),
    QObject::tr("Timeline"),           QObject::tr("UV Mapping"),         QObject::tr("Undo / Redo"),
    QObject::tr("Viewport"),           QObject::tr("Volumetrics"),        QObject::tr("Web Export"),
    QObject::tr("Other"),
};
// clang-format on

const QStringList kAreaList(std::begin(kAreas), std::end(kAreas));

} // namespace

const QStringList &productAreaNames()
{
    return kAreaList;
}
