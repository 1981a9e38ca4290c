#pragma once

#include <QStringList>

// The product areas a report can be filed against, in the order list_Area shows them.
// The names pass through QObject::tr during static initialisation, before any
// translator is installed: so the list shows, the launch option is matched against and
// the payload sends the source-language names, whatever the language.
const QStringList &productAreaNames();
