#include "faults/SmallDisk.h"
#include "paper/CsvFile.h"
#include "paper/GlyphMeasure.h"
#include "paper/PaperSupport.h"
#include "paper/PdfFile.h"
#include "paper/SheetFile.h"
#include "support/Builders.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QTest>

#include <memory>

using namespace pontrel;
using namespace pontrel::paper;
using namespace pontrel::test;

namespace {

constexpr qint64 DiskSize = 4 * 1024 * 1024;
constexpr int RowCount = 2000;

const QByteArray Layout =
    "<report format=\"1\" code=\"F01\" caption=\"加班\"><rows from=\"Over01\"/><columns>"
    "<column caption=\"員工\" width=\"40\">{Over01.EmpNo}</column>"
    "<column caption=\"備註\" width=\"140\">{Over01.Memo}</column></columns></report>";

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

using Save = bool (*)(const ReportDocument&, const QString&);
const std::pair<const char*, Save> Ways[] = {
    {"PDF", [](const ReportDocument& document, const QString& path) { return savePdf(document, path); }},
    {"comma-separated text",
     [](const ReportDocument& document, const QString& path) { return saveCsv(document, path); }},
    {"spreadsheet",
     [](const ReportDocument& document, const QString& path) { return saveSheet(document, path); }}};

} // namespace

/// Reports saved onto a disk without space: the file that stood there stays, and nothing else is left.
class ReportDiskTest : public QObject {
    Q_OBJECT

  public:
    explicit ReportDiskTest(QString trouble) : trouble_(std::move(trouble)) {}

  private Q_SLOTS:
    void initTestCase() {
        QVERIFY2(trouble_.isEmpty(), qPrintable(trouble_));
        disk_ = std::make_unique<SmallDisk>(DiskSize);
        store_.holdOpen();
        for (int row = 0; row < RowCount; ++row)
            insertRow(store_.database(), QStringLiteral("Over01"),
                      {{u"EmpNo", QString::number(row)},
                       {u"Memo", QStringLiteral("備註 %1 ").arg(row * 7919 % 10007).repeated(8)}});
        store_.commit();
        const Template layout = templateOf(Layout);
        document_ = ReportDocument::make(store_.path(), layout, {}, {}, QDate(2026, 1, 31),
                                         std::make_shared<GlyphMeasure>(layout));
    }

    void aFullDiskLeavesWhatStoodThere_data() {
        QTest::addColumn<int>("way");
        QTest::addColumn<qint64>("left");
        for (int way = 0; way < 3; ++way)
            // Nothing at all; a page of the file; about half of what the smallest file takes.
            for (const qint64 left : {0, 4096, 16384})
                QTest::addRow("%s, %lld bytes left", Ways[way].first, static_cast<long long>(left))
                    << way << left;
        // The library keeps its rows in a file of its own first and does not look whether they went there:
        // with room for the packed rows, but not for these, the spreadsheet must not come out short.
        QTest::newRow("spreadsheet, its rows do not fit") << 2 << qint64{300 * 1024};
    }
    void aFullDiskLeavesWhatStoodThere() {
        QFETCH(const int, way);
        QFETCH(const qint64, left);
        const QString path = disk_->folder() + QStringLiteral("/report");
        disk_->freeSpace();
        QFile::remove(path);
        QFile earlier(path);
        QVERIFY(earlier.open(QIODevice::WriteOnly) && earlier.write("earlier") == 7);
        earlier.close();
        disk_->fillUpTo(left);
        try {
            (void)Ways[way].second(*document_, path);
            QFAIL("nothing was thrown");
        } catch (const RunTimeError& failure) {
            QCOMPARE(failure.number(), error::FileAccess);
            QVERIFY2(failure.text().startsWith(QStringLiteral("無法寫入檔案：") + path),
                     qUtf8Printable(failure.text()));
            QVERIFY2(failure.text().contains(QStringLiteral("No space left")) ||
                         failure.text().contains(QStringLiteral("檔案沒有寫完，磁碟可能已滿")),
                     qUtf8Printable(failure.text()));
        }
        QCOMPARE(contentOf(path), QByteArray("earlier"));
        disk_->freeSpace();
        QCOMPARE(QDir(disk_->folder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList{QStringLiteral("report")});
        // And with room again it is saved.
        QVERIFY(Ways[way].second(*document_, path));
        QVERIFY(contentOf(path).size() > 16384);
    }

  private:
    QString trouble_; ///< Why there can be no small disk.
    std::unique_ptr<SmallDisk> disk_;
    TestStore store_;
    std::shared_ptr<const ReportDocument> document_;
};

int main(int argc, char** argv) {
    const QString trouble = enterOwnMounts();
    const QGuiApplication application(argc, argv);
    ReportDiskTest test(trouble);
    return QTest::qExec(&test, argc, argv);
}

#include "ReportDiskTest.moc"
