#include "Opening.h"

#include "store/RunTimeError.h"

#include <QRandomGenerator>
#include <QTest>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate Day(2001, 3, 5);

/// What a file should leave in the staging table, and whether a line of it ends the import.
struct Outcome {
    QStringList rows;
    bool failed = false;
};

QString isoTime(const QByteArray& hhmmss) {
    return QString::fromLatin1(hhmmss.left(2) + ':' + hhmmss.mid(2, 2) + ':' + hhmmss.mid(4, 2));
}

bool allDigits(const QByteArray& text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

QTime timeOf(const QByteArray& hhmmss) {
    return allDigits(hhmmss) ? QTime::fromString(QString::fromLatin1(hhmmss), u"HHmmss"_s) : QTime();
}

bool isDay(const QByteArray& yyyymmdd) {
    const QDate date = QDate::fromString(QString::fromLatin1(yyyymmdd), u"yyyyMMdd"_s);
    return allDigits(yyyymmdd) && date.isValid() && date.year() >= 100;
}

QByteArrayList linesOf(const QByteArray& content) {
    QByteArrayList lines = content.split('\n');
    const QByteArray last = lines.takeLast();
    for (QByteArray& line : lines)
        if (line.endsWith('\r'))
            line.chop(1);
    if (!last.isEmpty())
        lines += last;
    return lines;
}

/// The reading of a file told once more, with everything in memory.
Outcome expectedOf(const QByteArray& content, int interval) {
    Outcome outcome;
    bool pending = false;
    QByteArray keyTime;
    QByteArray keyClass;
    for (const QByteArray& text : linesOf(content)) {
        const QByteArray line = text.rightJustified(34, '0');
        const QByteArray EmpNo = line.mid(7, 5);
        const QByteArray time = line.mid(20, 6);
        QByteArray classCode = line.mid(26, 3);
        if (line.mid(29, 2) == "42" && EmpNo.back() >= '1' && EmpNo.back() <= '9') {
            pending = true;
            keyTime = time;
            keyClass = QByteArray("08") + EmpNo.back();
        }
        if (line.mid(29, 2) != "07")
            continue;
        if (pending) {
            const QTime key = timeOf(keyTime);
            const QTime swipe = timeOf(time);
            outcome.failed = !key.isValid() || !swipe.isValid();
            if (!outcome.failed && qAbs(key.secsTo(swipe)) % 60 <= interval)
                classCode = keyClass;
        }
        pending = false;
        const QByteArray quoted = EmpNo + classCode + line.mid(31, 3);
        outcome.failed =
            outcome.failed || !isDay(line.mid(12, 8)) || !timeOf(time).isValid() || quoted.contains('\'');
        if (outcome.failed)
            break;
        const QByteArray day = line.mid(12, 4) + '-' + line.mid(16, 2) + '-' + line.mid(18, 2);
        outcome.rows += QStringList{QString::fromLatin1(EmpNo), QString::fromLatin1(day), isoTime(time),
                                    QString::fromLatin1(classCode), QString::fromLatin1(line.mid(31, 3))}
                            .join(u'|');
    }
    return outcome;
}

QByteArray randomLine(QRandomGenerator& random) {
    static const QByteArrayList lineCodes{"07", "07", "07", "42", "42", "01"};
    static const QByteArrayList classes{"255", "000", "081"};
    const QByteArray card = "0000" + QByteArray::number(random.bounded(10));
    const QTime time = QTime(8, 0).addSecs(random.bounded(150));
    const QByteArray line =
        punchLine(card, Day, time, classes[random.bounded(3)], lineCodes[random.bounded(6)]);
    return random.bounded(3) == 0 ? line.chopped(1) + "\r\n" : line;
}

void spoil(QByteArray& content, QRandomGenerator& random) {
    static constexpr char characters[] = {'\'',   '#', '\n', '\r', '\0', ' ', '\xff',
                                          '\xe4', '9', '0',  ',',  ')',  '"', 'x'};
    const qsizetype place = random.bounded(static_cast<int>(content.size()));
    switch (random.bounded(4)) {
    case 0:
        content[place] = characters[random.bounded(static_cast<int>(std::size(characters)))];
        break;
    case 1:
        content.insert(place, characters[random.bounded(static_cast<int>(std::size(characters)))]);
        break;
    case 2:
        content.remove(place, random.bounded(1, 5));
        break;
    default:
        content[place] = static_cast<char>(random.bounded(256));
        break;
    }
}

} // namespace

/// Punch files spoiled at random: the same made up for a seed, no crash, no other error than a run-time
/// error, and exactly the rows up to the line that ends the import.
class PunchFileFuzzTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void spoiledFilesLeaveTheRowsBeforeTheBadLine() {
        Opening opening;
        opening.store.holdOpen();
        int failures = 0;
        qsizetype rows = 0;
        for (quint32 seed = 1; seed <= 1500; ++seed) {
            QRandomGenerator random(seed);
            QByteArray content;
            for (int line = random.bounded(1, 12); line > 0; --line)
                content += randomLine(random);
            for (int times = random.bounded(4); times > 0 && !content.isEmpty(); --times)
                spoil(content, random);
            const Outcome expected = expectedOf(content, 10);
            opening.store.clear();
            const QString path = opening.store.writePunchFile(u"20010305.txt"_s, content);
            bool failed = false;
            try {
                opening.calculation.UseRecord2Pontrel(Day, path, 5, 10);
            } catch (const RunTimeError&) {
                failed = true;
            }
            const auto shown = [&] {
                return qPrintable(u"seed %1: "_s.arg(seed) + QString::fromLatin1(content));
            };
            QVERIFY2(failed == expected.failed, shown());
            QVERIFY2(opening.rows(u"AtteTemp"_s) == expected.rows, shown());
            failures += failed ? 1 : 0;
            rows += expected.rows.size();
        }
        // The files are worth reading: many end early, many do not, and rows come out of them.
        QVERIFY2(failures > 150 && failures < 1350, qPrintable(QString::number(failures)));
        QVERIFY2(rows > 1500, qPrintable(QString::number(rows)));
    }
};

QTEST_GUILESS_MAIN(PunchFileFuzzTest)
#include "PunchFileFuzzTest.moc"
