// Fuzzes the launch-option grammar. The input is the argument list without the program
// path, arguments separated by NUL bytes as in argv, each decoded as UTF-8. Besides the
// sanitizers, every option found must be traceable to the text it came from.
#include "app/launchoptionparser.h"

#include <QByteArray>
#include <QStringList>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

[[noreturn]] void fail(const char *what, const QString &text)
{
    std::fprintf(stderr, "launch options: %s: %s\n", what, text.toUtf8().constData());
    std::abort();
}

// What "\w" of QRegExp takes.
bool isWordCharacter(QChar c)
{
    return c.isLetterOrNumber() || c.isMark() || c == QLatin1Char('_');
}

QString joined(const LaunchOption &option)
{
    return option.second.isEmpty() ? option.first : option.first + QLatin1Char('=') + option.second;
}

void check(const QStringList &arguments, const QList<LaunchOption> &options)
{
    const bool urlForm =
        !arguments.isEmpty() && arguments.first().startsWith(QLatin1String("kvfb://")) && arguments.first().size() > 7;
    QStringList sources; // the texts an option may come from
    if (urlForm) {
        QString parts = arguments.first().mid(7);
        if (parts.endsWith(QLatin1Char('/')))
            parts.chop(1);
        sources = parts.split(QLatin1Char(','));
    } else {
        for (const QString &argument : arguments)
            sources.append(argument.startsWith(QLatin1String("--")) ? argument.mid(2) : QString());
    }
    if (options.size() > sources.size())
        fail("more options than texts", arguments.join(QLatin1Char('|')));

    int from = 0; // options keep the order of their texts
    for (const LaunchOption &option : options) {
        if (option.first.isEmpty())
            fail("empty key", arguments.join(QLatin1Char('|')));
        for (QChar c : option.first) {
            if (!isWordCharacter(c))
                fail("key outside \\w", option.first);
        }
        if (urlForm && option.second.contains(QLatin1Char(',')))
            fail("comma inside a url value", option.second);
        const int at = sources.indexOf(joined(option), from);
        if (at < 0)
            fail("option not found in its texts", joined(option));
        from = at + 1;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray input = QByteArray::fromRawData(reinterpret_cast<const char *>(data), int(size));
    QStringList arguments;
    if (!input.isEmpty()) {
        for (const QByteArray &argument : input.split('\0'))
            arguments.append(QString::fromUtf8(argument));
    }
    check(arguments, parseLaunchOptions(arguments));
    return 0;
}
