// The hand-built texts of the report: exact bytes, and that whatever is typed they stay
// valid JSON whose values decode back to what was typed.
#include "expectedtexts.h"

#include "submit/reportjson.h"
#include "support/testenv.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QtTest>

namespace {

// Any Unicode scalar value, with quotes, backslashes and control characters made common.
QString randomText(QRandomGenerator &random)
{
    QString text;
    const int length = random.bounded(0, 20);
    for (int i = 0; i < length; ++i) {
        char32_t code = 0;
        switch (random.bounded(8)) {
        case 0:
            code = U'"';
            break;
        case 1:
            code = U'\\';
            break;
        case 2:
            code = char32_t(random.bounded(0x20));
            break; // C0 controls, NUL, CR, LF
        case 3:
            code = char32_t(0x7F + random.bounded(0x21));
            break; // DEL and C1 controls
        case 4:
            code = char32_t(0x20 + random.bounded(0x5F));
            break; // printable ASCII
        default:
            code = char32_t(random.bounded(0x110000 - 0x800));
            if (code >= 0xD800)
                code += 0x800; // skip the surrogate block: those are not characters
        }
        text.append(QString::fromUcs4(&code, 1));
    }
    return text;
}

QString decoded(const QJsonValue &value)
{
    // With the size given: fromUtf8(QByteArray) would stop at the first NUL.
    const QByteArray bytes = QByteArray::fromPercentEncoding(value.toString().toLatin1());
    return QString::fromUtf8(bytes.constData(), bytes.size());
}

} // namespace

class TestReportJson : public QObject
{
    Q_OBJECT

private slots:
    void percentEncodingKeepsOnlyUnreservedBytes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("encoded");
        QTest::newRow("unreserved") << "AZaz09-._~" << QByteArray("AZaz09-._~");
        QTest::newRow("space at quote") << "Ann Lee <a@b.c> \"x\"" << QByteArray("Ann%20Lee%20%3Ca%40b.c%3E%20%22x%22");
        QTest::newRow("backslash percent slash") << "\\%/+&=" << QByteArray("%5C%25%2F%2B%26%3D");
        QTest::newRow("non-ASCII") << QString::fromUtf8("José Ñ") << QByteArray("Jos%C3%A9%20%C3%91");
        QTest::newRow("CR LF tab NUL") << QString::fromLatin1("\r\n\t\0", 4) << QByteArray("%0D%0A%09%00");
        QTest::newRow("outside the BMP") << QString::fromUtf8("\xF0\x9F\x90\x9E") << QByteArray("%F0%9F%90%9E");
        QTest::newRow("empty") << QString() << QByteArray();
    }
    void percentEncodingKeepsOnlyUnreservedBytes()
    {
        QFETCH(QString, text);
        QFETCH(QByteArray, encoded);
        QCOMPARE(percentEncoded(text), encoded);
    }

    void identityText()
    {
        QCOMPARE(identityJson("Ann Lee", "ann@example.com", false),
                 QByteArray("{ \"product\" : \"Korvane3D\", \"name\" : \"Ann%20Lee\", \"email\" : "
                            "\"ann%40example.com\", \"validated\" : \"false\" }"));
        // "validated" stays a quoted string.
        QCOMPARE(identityJson(QString::fromUtf8("José Ñ"), "", true),
                 QByteArray("{ \"product\" : \"Korvane3D\", \"name\" : \"Jos%C3%A9%20%C3%91\", \"email\" : \"\", "
                            "\"validated\" : \"true\" }"));
    }

    void detailsText()
    {
        QCOMPARE(detailsJson(true, "3126", "Animation", false), expectedDetails("bug", "3126", "Animation", "false"));
        // NDA is a bare boolean; area names are encoded like typed text.
        QCOMPARE(detailsJson(false, "", "Crashes / Hangs", true),
                 expectedDetails("feature", "", "Crashes%20%2F%20Hangs", "true"));
    }

    void lineFeedsBecomeCrLf_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("sent");
        QTest::newRow("a LF b") << "a\nb"
                                << "a\r\nb";
        QTest::newRow("a CR LF b keeps its CR") << "a\r\nb"
                                                << "a\r\r\nb";
        QTest::newRow("lone CR") << "a\rb"
                                 << "a\rb";
        QTest::newRow("empty lines kept") << "\n\nx\n"
                                          << "\r\n\r\nx\r\n";
        QTest::newRow("empty") << ""
                               << "";
    }
    void lineFeedsBecomeCrLf()
    {
        QFETCH(QString, text);
        QFETCH(QString, sent);
        QCOMPARE(withCrLf(text), sent);
    }

    void fileFieldIsNamedByTheEncodedFileName()
    {
        QCOMPARE(fileFieldDisposition("shot 1.png"), QString("form-data; name=\"shot%201.png\""));
        QCOMPARE(fileFieldDisposition(QString::fromUtf8("Ñ\"x\".txt")),
                 QString("form-data; name=\"%C3%91%22x%22.txt\""));
    }

    void attachmentNames_data()
    {
        QTest::addColumn<QStringList>("names");
        QTest::addColumn<QByteArray>("list");
        QTest::newRow("two") << QStringList{"shot 1.png", "log.txt"} << QByteArray("[ \"shot%201.png\", \"log.txt\" ]");
        QTest::newRow("one has no comma") << QStringList{"log.txt"} << QByteArray("[ \"log.txt\" ]");
        QTest::newRow("same name twice") << QStringList{"a.txt", "a.txt"} << QByteArray("[ \"a.txt\", \"a.txt\" ]");
        // The payload never sends an empty list; the text for it is two blanks between brackets.
        QTest::newRow("none") << QStringList() << QByteArray("[  ]");
    }
    void attachmentNames()
    {
        QFETCH(QStringList, names);
        QFETCH(QByteArray, list);
        QCOMPARE(attachmentNameList(names), list);
    }

    // Whatever is typed into name, e-mail, build and area: the texts parse as JSON,
    // hold only unreserved characters and escapes, and decode back to the input.
    void anyTypedTextGivesValidJson()
    {
        QRandomGenerator random(20190621);
        const QRegularExpression encodedOnly(QStringLiteral("^([A-Za-z0-9._~-]|%[0-9A-F]{2})*$"));
        for (int round = 0; round < 100000; ++round) {
            const QString name = randomText(random);
            const QString email = randomText(random);
            const QString build = randomText(random);
            const QString area = randomText(random);
            const bool flag = random.bounded(2) == 1;

            QJsonParseError error;
            const QJsonObject identity = QJsonDocument::fromJson(identityJson(name, email, flag), &error).object();
            if (error.error != QJsonParseError::NoError)
                QFAIL(qPrintable(QStringLiteral("identity of round %1: %2").arg(round).arg(error.errorString())));
            const QJsonObject details = QJsonDocument::fromJson(detailsJson(flag, build, area, !flag), &error).object();
            if (error.error != QJsonParseError::NoError)
                QFAIL(qPrintable(QStringLiteral("details of round %1: %2").arg(round).arg(error.errorString())));

            QStringList wrong;
            auto expect = [&wrong](bool holds, const char *what) {
                if (!holds)
                    wrong << QString::fromLatin1(what);
            };
            expect(identity.size() == 4, "identity field count");
            expect(identity.value("product").toString() == "Korvane3D", "product");
            expect(decoded(identity.value("name")) == name, "name");
            expect(decoded(identity.value("email")) == email, "email");
            expect(identity.value("validated").toString() == (flag ? "true" : "false"), "validated");
            expect(details.size() == 12, "details field count");
            expect(details.value("type").toString() == (flag ? "bug" : "feature"), "type");
            expect(decoded(details.value("build")) == build, "build");
            expect(decoded(details.value("area")) == area, "area");
            expect(details.value("NDA").isBool() && details.value("NDA").toBool() == !flag, "NDA");
            expect(details.value("buildsys_build_number").toInt() == 3008, "build number");
            for (const QString &value : {identity.value("name").toString(), identity.value("email").toString(),
                                         details.value("build").toString(), details.value("area").toString()})
                expect(encodedOnly.match(value).hasMatch(), "only unreserved characters and escapes");
            if (!wrong.isEmpty())
                QFAIL(qPrintable(QStringLiteral("round %1 (%2): name %3, email %4, build %5, area %6")
                                     .arg(round)
                                     .arg(wrong.join(", "), QString::fromLatin1(percentEncoded(name)),
                                          QString::fromLatin1(percentEncoded(email)),
                                          QString::fromLatin1(percentEncoded(build)),
                                          QString::fromLatin1(percentEncoded(area)))));
        }
    }
};

FB_TEST_MAIN(TestReportJson)
#include "tst_reportjson.moc"
