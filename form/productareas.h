#pragma once

#include <QStringList>

// The product areas a report can be filed against, in the order list_Area shows them.
// The names are passed through QObject::tr during static initialisation, before any
// translator exists, so these are the source-language names that the payload sends.
const QStringList &productAreaNames();
