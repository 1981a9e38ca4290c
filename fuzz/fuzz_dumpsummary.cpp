// Fuzzes the summary writer: any text as a diagnostics dump, through the function the
// worker's job uses once the dump is read back. Besides the sanitizers, the summary
// must be one line that opens with "{ " and closes with " }", made only of the four
// system fields and display entries, every value percent-encoded.
#include "sysinfo/systemsummary.h"

#include <QRegularExpression>
#include <QString>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

const QRegularExpression &summaryPattern()
{
    static const QRegularExpression pattern = [] {
        const QString value = QStringLiteral("(?:[A-Za-z0-9._~-]|%[0-9A-F]{2})*");
        const QString field = QStringLiteral("\"(?:DirectXVersion|PhysicalMemory|Processor|OS)\" : \"%1\"").arg(value);
        const QString display = QStringLiteral("\"Display\" : \"%1(?:; %1)*\"").arg(value);
        return QRegularExpression(QStringLiteral("\\A\\{ (?:(?:, )?(?:%1|%2))* \\}\\z").arg(field, display));
    }();
    return pattern;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString dump = QString::fromUtf8(reinterpret_cast<const char *>(data), int(size));
    const QString summary = summarizeDump(dump);
    if (!summaryPattern().match(summary).hasMatch()) {
        std::fprintf(stderr, "dump summary: not of the summary's form: %s\n", summary.toUtf8().constData());
        std::abort();
    }
    return 0;
}
