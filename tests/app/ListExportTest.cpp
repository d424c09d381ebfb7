#include "app/ListForm.h"
#include "app/ProgressBox.h"
#include "app/controls/GridTable.h"
#include "paper/CsvFile.h"
#include "support/CsvText.h"
#include "support/PressWhenShown.h"
#include "support/SavedFiles.h"
#include "support/TableTakenAway.h"

#include <QFileDialog>
#include <QScrollBar>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QStringList Captions{u"員工碼"_s, u"姓名"_s, u"日期"_s, u"開始"_s,
                           u"時數"_s,   u"補休"_s, u"備註"_s, u"輸入時間"_s};

struct Kind {
    QString entry; ///< Of the menu.
    QString ending;
    QString caption;
};
const Kind Kinds[] = {{u"ActExportCsv"_s, u"csv"_s, u"匯出成 CSV 檔"_s},
                      {u"ActExportSheet"_s, u"xlsx"_s, u"匯出成試算表"_s}};

void addKinds() {
    QTest::addColumn<int>("kind");
    QTest::newRow("CSV") << 0;
    QTest::newRow("spreadsheet") << 1;
}

/// What a file holds, whichever kind it is.
QStringList linesOf(const Kind& kind, const QString& path) {
    QStringList lines;
    if (kind.ending == u"xlsx") {
        lines = sheetOf(path, 1).mid(1); // without what is frozen ...
        lines.removeLast();              // ... and the filter
        return lines;
    }
    for (const QStringList& line : csvOf(path))
        lines << line.join(u'|');
    return lines;
}

} // namespace

/// Lists exported into files for other programs.
class ListExportTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void cleanup() { setProgressDelay(-1); }

    void commaSeparatedTextShowsWhatTheListShows();
    void aSpreadsheetHoldsDatesAndNumbers();
    void realNumbersStayNumbers();
    void whatStandsForAValueIsExported();
    void wordsOfCheckMarksAreThoseOfTheColumn();
    void anEmptyListGivesItsCaptions_data() { addKinds(); }
    void anEmptyListGivesItsCaptions();
    void aRowThatIsNotSavedIsLeftOut_data() { addKinds(); }
    void aRowThatIsNotSavedIsLeftOut();
    void aRowDeletedElsewhereIsAnEmptyLine();
    void aLongListIsWholeAndInOrder_data() { addKinds(); }
    void aLongListIsWholeAndInOrder();
    void theListStaysAsItIs();
    void theNameIsProposed();
    void nothingIsWrittenOnCancel_data() { addKinds(); }
    void nothingIsWrittenOnCancel();
    void aFileIsReplacedAfterAQuestion_data() { addKinds(); }
    void aFileIsReplacedAfterAQuestion();
    void whatIsStoppedLeavesWhatStood_data() { addKinds(); }
    void whatIsStoppedLeavesWhatStood();
    void whatFailsIsTold_data() { addKinds(); }
    void whatFailsIsTold();
    void aStoreThatCannotBeReadIsTold_data() { addKinds(); }
    void aStoreThatCannotBeReadIsTold();
    void nobodyIsKeptFromWritingMeanwhile();

  private:
    /// Exports by the menu into a file of that name and answers what is told. Returns its path.
    static QString save(ListForm& form, const Kind& kind, const QString& name) {
        const QString path = form.folder.filePath(name);
        form.answers.expectFile(path).expectMsgBox();
        form.choose(kind.entry);
        return path;
    }
};

void ListExportTest::commaSeparatedTextShowsWhatTheListShows() {
    ListForm form;
    form.addThree();
    form.openOvertime();
    const QString path = save(form, Kinds[0], u"a.csv"_s);
    QCOMPARE(form.answers.trouble(), QString());
    QCOMPARE(csvOf(path),
             (QList<QStringList>{Captions,
                                 {u"007"_s, u"王小明"_s, u"2026/1/5"_s, u"18:05"_s, u"3"_s, u"是"_s,
                                  u"趕工"_s, u"2026/1/6 09:30"_s},
                                 {u"0010"_s, u"0010"_s, {}, {}, {}, u"否"_s, {}, {}},
                                 {u"'=1+1"_s, u"'=1+1"_s, u"1899/5/1"_s, u"00:00"_s, u"-12"_s, u"否"_s,
                                  u"他說\"好\", 再\n來\t\U00020BB7"_s, u"1850/12/31 23:59"_s}}));
    // To the byte: what needs no quotes has none.
    QVERIFY(contentOf(path).endsWith(
        u"\r\n'=1+1,'=1+1,1899/5/1,00:00,-12,否,\"他說\"\"好\"\", 再\n來\t\U00020BB7\",1850/12/31 23:59\r\n"_s
            .toUtf8()));
    const SeenPrompt& told = form.answers.seen().constLast();
    QCOMPARE(told.title, u"匯出成 CSV 檔"_s);
    QCOMPARE(told.text, u"已匯出 3 列到「%1」。"_s.arg(path));
    QCOMPARE(told.icon, MsgIcon::Information);
    QCOMPARE(form.files(), QStringList{u"a.csv"_s});
}

void ListExportTest::aSpreadsheetHoldsDatesAndNumbers() {
    ListForm form;
    form.addThree();
    form.openOvertime();
    const QString path = save(form, Kinds[1], u"a.xlsx"_s);
    QCOMPARE(form.answers.trouble(), QString());
    QCOMPARE(sheetOf(path, 1),
             (QStringList{u"frozen at A2"_s,
                          u"A1=\"員工碼\" B1=\"姓名\" C1=\"日期\" D1=\"開始\" E1=\"時數\" F1=\"補休\" "
                          "G1=\"備註\" H1=\"輸入時間\" "_s,
                          u"A2=\"007\" B2=\"王小明\" C2=46027 D2=0.7538194444444445 E2=3 F2=\"是\" "
                          "G2=\"趕工\" H2=46028.39583333334 "_s,
                          u"A3=\"0010\" B3=\"0010\" F3=\"否\" "_s,
                          u"A4=\"=1+1\" B4=\"=1+1\" C4=\"1899/5/1\" D4=0 E4=-12 F4=\"否\" "
                          "G4=\"他說\"好\", 再\n來\t\U00020BB7\" H4=\"1850/12/31 23:59\" "_s,
                          u"filter A1:H4"_s}));
    const QHash<QString, QString> formats = formatsOf(path);
    QCOMPARE(formats, (QHash<QString, QString>{{u"C2"_s, u"yyyy/mm/dd"_s},
                                               {u"D2"_s, u"hh:mm"_s},
                                               {u"H2"_s, u"yyyy/mm/dd hh:mm"_s},
                                               {u"D4"_s, u"hh:mm"_s}}));
    // Columns as wide as those of the list, with room for what they show.
    QStringList widths;
    QXmlStreamReader xml(sheetPart(path, u"xl/worksheets/sheet1.xml"_s));
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == u"col")
            widths << QString::number(qRound(xml.attributes().value(u"width"_s).toDouble()));
    }
    QCOMPARE(widths, (QStringList{u"13"_s, u"13"_s, u"13"_s, u"9"_s, u"9"_s, u"9"_s, u"23"_s, u"20"_s}));
}

void ListExportTest::realNumbersStayNumbers() {
    ListForm form;
    for (const double hours : {1.5, -0.25, 0.0})
        insertRow(form.store.database(), u"Holi03"_s,
                  {{u"BusNo", QString::number(hours)}, {u"HoliHours", hours}, {u"HoliDesc", u"-0.25"}});
    form.grid.setColumns({{u"時數"_s, u"HoliHours"_s, 60}, {u"事由"_s, u"HoliDesc"_s, 60}});
    form.open(u"select * from Holi03 order by HoliHours"_s);
    QCOMPARE(
        csvOf(save(form, Kinds[0], u"a.csv"_s)),
        (QList<QStringList>{
            {u"時數"_s, u"事由"_s}, {u"-0.25"_s, u"-0.25"_s}, {u"0"_s, u"-0.25"_s}, {u"1.5"_s, u"-0.25"_s}}));
    QCOMPARE(sheetOf(save(form, Kinds[1], u"a.xlsx"_s), 1).mid(2, 3),
             (QStringList{u"A2=-0.25 B2=\"-0.25\" "_s, u"A3=0 B3=\"-0.25\" "_s, u"A4=1.5 B4=\"-0.25\" "_s}));
    QCOMPARE(form.answers.trouble(), QString());
}

void ListExportTest::whatStandsForAValueIsExported() {
    ListForm form;
    form.addOvertime(
        {{u"OverDate", QDate(2026, 1, 5)}, {u"TransDate", QDate(2026, 1, 6)}, {u"OverHours", 2}});
    form.addOvertime({{u"TransDate", QDateTime(QDate(2026, 1, 6), QTime(12, 0))}});
    GridColumn weekday{u"星期"_s, u"OverDate"_s, 60};
    weekday.cellText = [](const Value& day) { return day.isNull() ? u"無"_s : u"一"_s; };
    GridColumn stamp{u"輸入"_s, u"TransDate"_s, 60}; // without the time at midnight
    stamp.cellText = [](const Value& moment) {
        return moment.toTime() == QTime(0, 0) ? u"2026/1/6"_s : TDBGrid::shownText(moment);
    };
    GridColumn hours{u"時"_s, u"OverHours"_s, 60}; // a value that has no other text
    hours.cellText = [](const Value& value) { return value.joined(); };
    form.grid.setColumns({weekday, stamp, hours});
    form.openOvertime();
    QCOMPARE(sheetOf(save(form, Kinds[1], u"a.xlsx"_s), 1).mid(2, 2),
             (QStringList{u"A2=\"一\" B2=46028 C2=2 "_s, u"A3=\"無\" B3=46028.5 "_s}));
    QCOMPARE(csvOf(save(form, Kinds[0], u"a.csv"_s)).mid(1),
             (QList<QStringList>{{u"一"_s, u"2026/1/6"_s, u"2"_s}, {u"無"_s, u"2026/1/6 12:00"_s, {}}}));
    QCOMPARE(form.answers.trouble(), QString());
}

void ListExportTest::wordsOfCheckMarksAreThoseOfTheColumn() {
    ListForm form;
    form.addOvertime({{u"EmpNo", u"1"}, {u"Rest", true}});
    form.addOvertime({{u"EmpNo", u"2"}, {u"Rest", false}});
    GridColumn sex{u"性別"_s, u"Rest"_s, 60};
    sex.spokenMarks = {u"男"_s, u"女"_s};
    form.grid.setColumns({{u"補休"_s, u"Rest"_s, 60}, sex, {u"無"_s, u"Missing"_s, 60}});
    form.openOvertime();
    QCOMPARE(csvOf(save(form, Kinds[0], u"a.csv"_s)),
             (QList<QStringList>{
                 {u"補休"_s, u"性別"_s, u"無"_s}, {u"是"_s, u"男"_s, {}}, {u"否"_s, u"女"_s, {}}}));
    QCOMPARE(form.answers.trouble(), QString());
}

void ListExportTest::anEmptyListGivesItsCaptions() {
    QFETCH(const int, kind);
    ListForm form;
    form.openOvertime();
    const QString path = save(form, Kinds[kind], u"a."_s + Kinds[kind].ending);
    const QString captions = kind == 0 ? Captions.join(u'|')
                                       : u"A1=\"員工碼\" B1=\"姓名\" C1=\"日期\" D1=\"開始\" E1=\"時數\" "
                                         "F1=\"補休\" G1=\"備註\" H1=\"輸入時間\" "_s;
    QCOMPARE(linesOf(Kinds[kind], path), QStringList{captions});
    QCOMPARE(form.answers.seen().constLast().text, u"已匯出 0 列到「%1」。"_s.arg(path));
}

void ListExportTest::aRowThatIsNotSavedIsLeftOut() {
    QFETCH(const int, kind);
    ListForm form;
    form.addThree();
    form.openOvertime();
    const QStringList before = linesOf(Kinds[kind], save(form, Kinds[kind], u"a."_s + Kinds[kind].ending));
    QCOMPARE(before.size(), 4);
    form.source.AddNew();
    form.source.recordset().setField(u"EmpNo"_s, Value(u"新"_s));
    QCOMPARE(linesOf(Kinds[kind], save(form, Kinds[kind], u"b."_s + Kinds[kind].ending)), before);
    // The entry goes on, and a saved row is exported.
    QCOMPARE(form.source.editMode(), EditMode::Add);
    form.source.Update();
    const QStringList after = linesOf(Kinds[kind], save(form, Kinds[kind], u"c."_s + Kinds[kind].ending));
    QCOMPARE(after.size(), 5);
    QCOMPARE(after.first(4), before);
    QVERIFY2(after.constLast().contains(u'新'), qPrintable(after.constLast()));
    QCOMPARE(form.answers.trouble(), QString());
}

void ListExportTest::aRowDeletedElsewhereIsAnEmptyLine() {
    ListForm form;
    form.addThree();
    form.openOvertime();
    form.store.database().execute(u"delete * from Over01 where EmpNo ='0010'"_s);
    const QList<QStringList> lines = csvOf(save(form, Kinds[0], u"a.csv"_s));
    QCOMPARE(lines.size(), 4);
    QCOMPARE(lines.at(2), QStringList(8, QString()));
    QCOMPARE(lines.at(3).constFirst(), u"'=1+1"_s);
}

void ListExportTest::aLongListIsWholeAndInOrder() {
    QFETCH(const int, kind);
    constexpr int Punches = 1234; // no whole number of batches
    ListForm form;
    form.addPunches(Punches);
    form.grid.setColumns({{u"員工碼"_s, u"EmpNo"_s, 60}, {u"打卡時間"_s, u"UseTime"_s, 60}});
    form.open(u"select * from Atte01 order by EmpNo desc"_s);
    const QStringList lines = linesOf(Kinds[kind], save(form, Kinds[kind], u"a."_s + Kinds[kind].ending));
    QCOMPARE(lines.size(), Punches + 1);
    for (int line = 1; line <= Punches; ++line) {
        const QString code = u"%1"_s.arg(Punches + 1 - line, 6, 10, QLatin1Char('0'));
        QCOMPARE(lines.at(line), kind == 0 ? code + u"|08:00"_s
                                           : u"A%1=\"%2\" B%1=0.3334143518518519 "_s.arg(line + 1).arg(code));
    }
    QCOMPARE(form.answers.seen().constLast().text.section(u'到', 0, 0), u"已匯出 1,234 列"_s);
}

void ListExportTest::theListStaysAsItIs() {
    ListForm form;
    form.addPunches(800);
    form.open();
    form.source.moveTo(300);
    const int top = form.grid.verticalScrollBar()->value();
    const qint64 read = form.rowsRead();
    save(form, Kinds[0], u"a.csv"_s);
    QCOMPARE(form.selectedRows(), QList<int>{300});
    QCOMPARE(form.source.recordset().AbsolutePosition(), 300);
    QCOMPARE(form.grid.verticalScrollBar()->value(), top);
    QVERIFY2(form.rowsReadSince(read) <= form.rowsInSight(),
             qPrintable(QString::number(form.rowsReadSince(read))));
}

void ListExportTest::theNameIsProposed() {
    ListForm form;
    form.openOvertime();
    const auto proposed = [&form](const Kind& kind) {
        QString name;
        form.answers.expect(u"CommonDialog1"_s, [&](QWidget& dialog) {
            name = control<QLineEdit>(dialog, u"fileNameEdit"_s).text();
            static_cast<QFileDialog&>(dialog).reject();
        });
        form.choose(kind.entry);
        return name;
    };
    QCOMPARE(proposed(Kinds[0]), u"加班-清單.csv"_s);
    QCOMPARE(proposed(Kinds[1]), u"加班-清單.xlsx"_s);
    // A name without an ending gets it.
    save(form, Kinds[0], u"名冊"_s);
    QCOMPARE(form.files(), QStringList{u"名冊.csv"_s});
    QCOMPARE(form.answers.trouble(), QString());
}

void ListExportTest::nothingIsWrittenOnCancel() {
    QFETCH(const int, kind);
    ListForm form;
    form.addThree();
    form.openOvertime();
    form.answers.expectFile({});
    form.choose(Kinds[kind].entry);
    QCOMPARE(form.answers.trouble(), QString());
    QCOMPARE(form.files(), QStringList());
}

void ListExportTest::aFileIsReplacedAfterAQuestion() {
    QFETCH(const int, kind);
    ListForm form;
    form.addThree();
    form.openOvertime();
    const QString name = u"a."_s + Kinds[kind].ending;
    const QString path = form.folder.filePath(name);
    writeContent(path, "old");
    form.answers.expectFile(path).expectMsgBox(MsgAnswer::No).expectFile({});
    form.choose(Kinds[kind].entry);
    QCOMPARE(form.answers.trouble(), QString());
    QCOMPARE(contentOf(path), QByteArray("old"));
    form.answers.expectFile(path).expectMsgBox(MsgAnswer::Yes).expectMsgBox();
    form.choose(Kinds[kind].entry);
    QCOMPARE(form.answers.trouble(), QString());
    QCOMPARE(linesOf(Kinds[kind], path).size(), 4);
    QCOMPARE(form.files(), QStringList{name});
}

void ListExportTest::whatIsStoppedLeavesWhatStood() {
    QFETCH(const int, kind);
    ListForm form;
    form.addPunches(2500); // told of in thousands of rows
    form.open();
    const QString path = form.folder.filePath(u"a."_s + Kinds[kind].ending);
    setProgressDelay(0);
    {
        PressWhenShown cancel;
        form.answers.expectFile(path);
        form.choose(Kinds[kind].entry);
        QCOMPARE(cancel.pressed, 1);
        QCOMPARE(form.files(), QStringList());
        writeContent(path, "old");
        form.answers.expectFile(path).expectMsgBox(MsgAnswer::Yes);
        form.choose(Kinds[kind].entry);
        QCOMPARE(form.answers.trouble(), QString());
        QCOMPARE(cancel.pressed, 2);
        QCOMPARE(contentOf(path), QByteArray("old"));
        QCOMPARE(form.files().size(), 1);
    }
    // And the next one comes to its end.
    setProgressDelay(-1);
    form.answers.expectFile(path).expectMsgBox(MsgAnswer::Yes).expectMsgBox();
    form.choose(Kinds[kind].entry);
    QCOMPARE(linesOf(Kinds[kind], path).size(), 2501);
}

void ListExportTest::whatFailsIsTold() {
    QFETCH(const int, kind);
    ListForm form;
    form.addThree();
    form.openOvertime();
    const QString gone = form.folder.filePath(u"gone/a."_s + Kinds[kind].ending);
    QVERIFY(QDir(form.folder.path()).mkdir(u"gone"_s));
    // The folder goes while the dialog stands.
    form.answers.expect(u"CommonDialog1"_s, [&](QWidget& dialog) {
        auto& name = control<QLineEdit>(dialog, u"fileNameEdit"_s);
        static_cast<QFileDialog&>(dialog).selectFile(gone);
        name.setText(gone);
        QTest::keyClick(&name, Qt::Key_Return);
        QVERIFY(QDir(form.folder.path()).rmdir(u"gone"_s));
    });
    form.answers.expectMsgBox();
    form.choose(Kinds[kind].entry);
    QCOMPARE(form.answers.trouble(), QString());
    const SeenPrompt& told = form.answers.seen().constLast();
    QVERIFY2(told.text.startsWith(u"無法寫入檔案：%1（"_s.arg(gone)), qUtf8Printable(told.text));
    QCOMPARE(told.icon, MsgIcon::Exclamation);
    QCOMPARE(form.files(), QStringList());
}

void ListExportTest::aStoreThatCannotBeReadIsTold() {
    QFETCH(const int, kind);
    ListForm form;
    form.addThree();
    form.openOvertime();
    std::optional<TableTakenAway> gone; // while the dialog stands
    form.answers.expect(u"CommonDialog1"_s, [&](QWidget& dialog) {
        gone.emplace(form.store.path(), "Over01");
        auto& name = control<QLineEdit>(dialog, u"fileNameEdit"_s);
        name.setText(form.folder.filePath(u"a."_s + Kinds[kind].ending));
        QTest::keyClick(&name, Qt::Key_Return);
    });
    form.answers.expectMsgBox();
    form.choose(Kinds[kind].entry);
    QCOMPARE(form.answers.trouble(), QString());
    QCOMPARE(form.answers.seen().constLast().icon, MsgIcon::Exclamation);
    QCOMPARE(form.files(), QStringList());
    QVERIFY(form.isVisible()); // the program goes on
}

void ListExportTest::nobodyIsKeptFromWritingMeanwhile() {
    ListForm form;
    form.addPunches(2500);
    form.open();
    const QString path = form.folder.filePath(u"a.csv"_s);
    // Another connection, as another process would have one: it fails where a lock is held.
    int written = 0;
    const auto write = [&](std::size_t, std::size_t) {
        addReadPunch(form.store.database(), u"後來"_s, {2001, 3, 6}, QTime(8, written++));
        return true;
    };
    QVERIFY(paper::saveCsv(GridTable(form.grid), path, write));
    QCOMPARE(written, 3);
    QCOMPARE(csvOf(path).size(), 2501); // the rows of the list, which has not been refreshed
}

int main(int argc, char** argv) {
    return runTests<ListExportTest>(argc, argv);
}

#include "ListExportTest.moc"
