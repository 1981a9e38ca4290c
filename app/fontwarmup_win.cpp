#include "app/fontwarmup.h"

// Nothing is read ahead on Windows (see the header).
FontWarmUp::FontWarmUp(const QStringList &) {}

FontWarmUp::~FontWarmUp() = default;
