#include "paper/PaperSupport.h"
#include "store/RunTimeError.h"
#include "support/Builders.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <random>

using namespace pontrel;
using namespace pontrel::paper;
using namespace pontrel::test;

namespace {

constexpr qsizetype Rounds = 4000; ///< Over all templates.

QByteArrayList templates() {
    QByteArrayList texts;
    const QDir folder(QStringLiteral(PONTREL_REPORTS));
    for (const QString& name : folder.entryList({QStringLiteral("*.rpt")}, QDir::Files, QDir::Name)) {
        QFile file(folder.filePath(name));
        if (file.open(QIODevice::ReadOnly))
            texts += file.readAll();
    }
    return texts;
}

/// Changes a text at a few places: words of the language in wrong places, parts twice or gone, single bytes.
class Spoiler {
  public:
    explicit Spoiler(unsigned seed) : chance_(seed) {}

    QByteArray spoil(QByteArray text) {
        for (int changes = 1 + upTo(1); changes > 0 && !text.isEmpty(); --changes)
            change(text);
        return text;
    }

  private:
    int upTo(int most) { return std::uniform_int_distribution<int>(0, most)(chance_); }

    void change(QByteArray& text) {
        static const QByteArrayList words{"\"",
                                          "<",
                                          ">",
                                          "{",
                                          "}",
                                          "&amp;",
                                          "&b;",
                                          "=\"\"",
                                          "{Page}",
                                          "{Count}",
                                          "Base06",
                                          ".",
                                          "\"nan\"",
                                          "\"1e9\"",
                                          "\"-1\"",
                                          "<group by=\"EmpNo\"/>",
                                          "width=\"400\"",
                                          "format=\"roc\"",
                                          "summary=\"yes\"",
                                          "total=\"sum\"",
                                          "once=\"group\"",
                                          "<!--",
                                          "]]>",
                                          "\xff",
                                          "\xE6\x97\xA5",
                                          "\0",
                                          "{Distinct Atte02.EmpNo}",
                                          "words=\"|\"",
                                          "<end label=\"{Count}\"/>",
                                          "new-page=\"yes\"",
                                          "+",
                                          "<flow across=\"3\">"};
        const auto size = static_cast<int>(text.size());
        const int at = upTo(size - 1);
        const int length = upTo(qMin(40, size - at));
        switch (upTo(4)) {
        case 0:
            text.remove(at, length);
            break;
        case 1:
            text.insert(upTo(size), text.mid(at, length));
            break;
        case 2:
            text.insert(at, words[upTo(static_cast<int>(words.size()) - 1)]);
            break;
        case 3:
            text.replace(at, length, words[upTo(static_cast<int>(words.size()) - 1)]);
            break;
        default:
            text[at] = static_cast<char>(upTo(255));
            break;
        }
    }

    std::mt19937 chance_;
};

} // namespace

/// Templates spoiled by chance: each is read, or refused with its place. What is read can be laid out.
class TemplateFuzz : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aSpoiledTemplateIsReadOrRefused() {
        TestStore store;
        addEmployee(store.database(), QStringLiteral("A01"), {{u"UnitNo", u"0001"}});
        for (int day = 1; day <= 3; ++day)
            insertRow(store.database(), QStringLiteral("Atte02"),
                      {{u"EmpNo", u"A01"}, {u"UseDate", QDate(2026, 1, day)}, {u"TimeNo", u"1"}});
        int read = 0;
        int refused = 0;
        unsigned seed = 0;
        const QByteArrayList texts = templates();
        QVERIFY(!texts.isEmpty());
        for (const QByteArray& text : texts)
            for (qsizetype round = 0; round < qMax<qsizetype>(100, Rounds / texts.size()); ++round) {
                const QByteArray spoiled = Spoiler(++seed).spoil(text);
                Template layout;
                try {
                    layout = templateOf(spoiled);
                } catch (const TemplateFault& fault) {
                    ++refused;
                    QVERIFY2(fault.line() >= 1 && fault.line() <= spoiled.count('\n') + 1 &&
                                 fault.column() >= 1,
                             qPrintable(QStringLiteral("seed %1: %2").arg(seed).arg(fault.text())));
                    continue;
                }
                ++read;
                const auto document = documentOf(store, layout);
                QVERIFY2(document->pageCount() >= 1, qPrintable(QString::number(seed)));
                for (int page = 0; page < document->pageCount(); ++page)
                    QVERIFY(!itemsOf(*document, page).empty());
            }
        // Both ends are reached, or it would try nothing.
        QVERIFY2(read > 20 && refused > 200,
                 qPrintable(QStringLiteral("%1 read, %2 refused").arg(read).arg(refused)));
    }
};

QTEST_GUILESS_MAIN(TemplateFuzz)
#include "TemplateFuzz.moc"
