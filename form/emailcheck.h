#pragma once

#include <QHostInfo>

// The report's "validated" value: true exactly when a look-up has completed (its id is
// not -1) and reported no error. A look-up that found no addresses still counts.
bool lookupValidated(const QHostInfo &info);
