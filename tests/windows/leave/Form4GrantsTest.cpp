#include "support/RefuseDeletes.h"
#include "windows/leave/Form4Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

Fields grant(const QString& SuitNo, const QString& HoliNo, double from, double to, double days) {
    return {{u"SuitNo", SuitNo},
            {u"HoliNo", HoliNo},
            {u"HoliYearBeg", static_cast<int>(from)},
            {u"HoliYearEnd", static_cast<int>(to)},
            {u"HoliDays", days}};
}

} // namespace

/// The tabs of the leave types and of the grants.
class Form4GrantsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theTypesAreListed();
    void aNewTypeIsEntered();
    void aTypeEnteredHereShowsItsCodeOnTheNotes();
    void aTypeInUseCanBeDeleted();
    void aRefusedDeleteOfATypeLeavesIt();
    void theGrantsAreListedByTheNameOfTheirScheme();
    void aNewGrantIsEnteredWithItsNames();
    void bandsAreNotChecked();
    void anUnknownCodeIsToldAndMayBeSaved();
    void refreshHidesGrantsWithoutParents();
    void aGrantOfTheJoinIsEditedAndDeleted();
    void aGrantIsAddedOverTheJoin();
    void aGrantIsNotDeleted_data();
    void aGrantIsNotDeleted();
    void aLookupFillsItsField();
    void aSchemeAddedLaterShowsItsCode();

  private:
    static QStringList grants(const QList<Fields>& all) { return Form4Fixture::expected(u"Holi02"_s, all); }
};

void Form4GrantsTest::theTypesAreListed() {
    Form4Fixture it;
    it.open(TypesTab);
    QCOMPARE(it.captions(u"TDBGrid1(0)"_s),
             QStringList({u"假別代碼"_s, u"假別"_s, u"扣除假日"_s, u"備註"_s}));
    QCOMPARE(it.shown(u"TDBGrid1(0)"_s), QStringList({u"01|休假|v|"_s, u"02|保留假|v|"_s, u"03|事假|v|"_s,
                                                      u"04|病假|v|"_s, u"08|產假|-|"_s}));
    QCOMPARE(it.panel(1), u"資料錄:1/5"_s);
    QCOMPARE(it.buttonsOn(0), QList<int>({0, 1, 2, 6, 7, 8, 9, 10, 11, 12}));
    QCOMPARE(it.text(u"Text1(0)"_s) + it.text(u"Text1(1)"_s), u"01休假"_s);
    QVERIFY(it.at<QCheckBox>(u"Check1"_s).isChecked());
    QCOMPARE(it.at<QCheckBox>(u"Check1"_s).text(), u"是"_s);
    QVERIFY(!it.at(u"Frame1(0)"_s).isEnabled());
}

void Form4GrantsTest::aNewTypeIsEntered() {
    Form4Fixture it;
    it.open(TypesTab);
    it.press(0);
    QCOMPARE(it.focused(), u"Text1(0)"_s);
    QCOMPARE(it.panel(2), u"新增資料"_s);
    QCOMPARE(it.tabsOn(), QList<int>{TypesTab});
    it.type(u"Text1(0)"_s, u"09"_s);
    it.type(u"Text1(1)"_s, u"補休"_s);
    it.press(u"Check1"_s);
    it.type(u"Text1(2)"_s, u"Memo"_s);
    it.press(4);
    QCOMPARE(
        it.rows(u"Holi01"_s).constLast(),
        expectedRow(u"Holi01"_s,
                    {{u"HoliNo", u"09"}, {u"HoliType", u"補休"}, {u"HoliDeduct", true}, {u"Memo", u"Memo"}}));
    QCOMPARE(it.rows(u"Holi01"_s).size(), 6);
    QCOMPARE(it.panel(1) + it.panel(2) + it.text(u"Text1(0)"_s), u"資料錄:6/609"_s);
    QVERIFY(it.seen().isEmpty());
}

void Form4GrantsTest::aTypeEnteredHereShowsItsCodeOnTheNotes() {
    Form4Fixture it;
    addRoster(it.database(), u"10001"_s, Monday, u"A"_s);
    it.open(TypesTab);
    it.press(0);
    it.type(u"Text1(0)"_s, u"09"_s);
    it.type(u"Text1(1)"_s, u"補休"_s);
    it.press(u"Check1"_s);
    it.press(4);
    it.clickTab(NotesTab);
    it.press(0);
    it.fillNote(u"10001"_s, u"09"_s, u"900305"_s, u"0800"_s, u"1700"_s);
    QCOMPARE(it.label4(8), u"補休"_s);
    it.press(4);
    QCOMPARE(it.notes(), it.expectedNotes({it.wholeNote(FirstNumber, u"10001"_s, u"09"_s, Monday)}));
    QCOMPARE(it.shown(u"TDBGrid1(2)"_s), QStringList{u"09|2001/3/5|2001/3/5|08:00|17:00|8|A|200103020001"_s});
    it.clickTab(BrowseTab);
    it.type(u"Text5"_s, u"10001"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.shown(u"TDBGrid1(3)"_s),
             QStringList{u"-|200103020001|09|2001/3/5|08:00|2001/3/5|17:00|1|"_s});
    QVERIFY(it.seen().isEmpty());
}

void Form4GrantsTest::aTypeInUseCanBeDeleted() {
    Form4Fixture it;
    it.addWholeDay(FirstNumber, u"10001"_s, u"01"_s, Monday);
    it.open(TypesTab);
    it.answers.expectMsgBox(MsgAnswer::No);
    it.press(2);
    QCOMPARE(it.rows(u"Holi01"_s).size(), 5);
    it.answers.expectMsgBox(MsgAnswer::Yes);
    it.press(2);
    QCOMPARE(it.seen(), QStringList(2, u"確認刪除|確定刪除這筆資料?"_s));
    QCOMPARE(it.answers.seen().constLast().icon, MsgIcon::Question);
    QCOMPARE(it.shown(u"TDBGrid1(0)"_s),
             QStringList({u"02|保留假|v|"_s, u"03|事假|v|"_s, u"04|病假|v|"_s, u"08|產假|-|"_s}));
    QCOMPARE(it.panel(1), u"資料錄:4/4"_s); // not on its neighbour
    QCOMPARE(it.notes().size(), 1);
    // The lists have its name until the window opens anew; then the note shows the bare code.
    it.clickTab(BrowseTab);
    QCOMPARE(it.shown(u"TDBGrid1(3)"_s).constFirst().section(u'|', 2, 2), u"休假"_s);
    it.form().unload();
    OpenToolWindow(4);
    it.clickTab(BrowseTab);
    QCOMPARE(it.shown(u"TDBGrid1(3)"_s).constFirst().section(u'|', 2, 2), u"01"_s);
}

void Form4GrantsTest::aRefusedDeleteOfATypeLeavesIt() {
    Form4Fixture it;
    it.open(TypesTab);
    it.database().execute(u"delete * from Holi01 where HoliNo ='01'"_s); // another program was quicker
    it.answers.expectMsgBox(MsgAnswer::Yes).expectMsgBox();
    it.press(2);
    QCOMPARE(it.seen(), QStringList({u"確認刪除|確定刪除這筆資料?"_s, u"錯誤訊息|無法刪除資料!"_s}));
    QCOMPARE(it.answers.seen().constLast().icon, MsgIcon::Exclamation);
    QCOMPARE(it.panel(1), u"資料錄:1/5"_s);
    QCOMPARE(it.rows(u"Holi01"_s).size(), 4);
}

void Form4GrantsTest::theGrantsAreListedByTheNameOfTheirScheme() {
    Form4Fixture it;
    insertRow(it.database(), u"Holi02"_s, grant(u"1"_s, u"01"_s, 1, 3, 7));
    insertRow(it.database(), u"Holi02"_s, grant(u"9"_s, u"07"_s, 3, 6, 10.5));
    it.open(GrantsTab);
    QCOMPARE(it.captions(u"TDBGrid1(1)"_s),
             QStringList({u"適用辦法"_s, u"假別"_s, u"休假年資(起)"_s, u"休假年資(迄)"_s, u"可休日數"_s}));
    QCOMPARE(it.shown(u"TDBGrid1(1)"_s), QStringList({u"公務人員請假規則|01|1|3|7"_s, u"9|07|3|6|10.5"_s}));
    QCOMPARE(it.label(u"Label41(0)"_s) + it.label(u"Label41(1)"_s), u"公務人員請假規則休假"_s);
    QCOMPARE(it.buttonsOn(1), QList<int>({0, 1, 2, 6, 7, 8, 9, 10, 11, 12}));
    it.press(9); // no such codes: the names of the row before stay
    QCOMPARE(it.text(u"Text2(0)"_s) + it.label(u"Label41(0)"_s) + it.label(u"Label41(1)"_s),
             u"9公務人員請假規則休假"_s);
    QVERIFY(it.seen().isEmpty());
}

void Form4GrantsTest::aNewGrantIsEnteredWithItsNames() {
    Form4Fixture it;
    it.open(GrantsTab);
    QCOMPARE(it.panel(1), u"資料錄:1/0"_s);
    QCOMPARE(it.buttonsOn(1), QList<int>({0, 10, 11, 12}));
    it.press(0);
    QCOMPARE(it.focused(), u"Text2(0)"_s);
    it.type(u"Text2(0)"_s, u"2"_s);
    QCOMPARE(it.label(u"Label41(0)"_s), u"勞工請假規則"_s);
    it.type(u"Text2(1)"_s, u"03"_s);
    QCOMPARE(it.label(u"Label41(1)"_s), u"事假"_s);
    it.type(u"Text2(2)"_s, u"0"_s);
    it.type(u"Text2(3)"_s, u"99"_s);
    it.type(u"Text2(4)"_s, u"14"_s);
    it.press(4);
    QCOMPARE(it.rows(u"Holi02"_s), grants({grant(u"2"_s, u"03"_s, 0, 99, 14)}));
    QCOMPARE(it.shown(u"TDBGrid1(1)"_s), QStringList{u"勞工請假規則|03|0|99|14"_s});
    it.press(0);
    QCOMPARE(it.label(u"Label41(0)"_s) + it.label(u"Label41(1)"_s), QString());
    it.press(3);
    QCOMPARE(it.rows(u"Holi02"_s).size(), 1);
    QVERIFY(it.seen().isEmpty());
}

void Form4GrantsTest::bandsAreNotChecked() {
    Form4Fixture it;
    insertRow(it.database(), u"Holi02"_s, grant(u"1"_s, u"01"_s, 1, 9, 7));
    it.open(GrantsTab);
    it.press(0);
    it.type(u"Text2(0)"_s, u"1"_s);
    it.type(u"Text2(1)"_s, u"01"_s);
    it.type(u"Text2(2)"_s, u"9"_s);
    it.type(u"Text2(3)"_s, u"2"_s);
    it.press(4);
    Fields saved = grant(u"1"_s, u"01"_s, 9, 2, 0);
    saved.removeLast();
    QCOMPARE(it.rows(u"Holi02"_s), grants({grant(u"1"_s, u"01"_s, 1, 9, 7), saved}));
    QVERIFY(it.seen().isEmpty());
}

void Form4GrantsTest::anUnknownCodeIsToldAndMayBeSaved() {
    Form4Fixture it;
    it.open(GrantsTab);
    it.press(0); // the focus is on the scheme's box
    it.key(Qt::Key_9);
    it.answers.expectMsgBox();
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen(), QStringList{u"警告訊息|無此【適用辦法代碼】,請重新輸入"_s});
    QCOMPARE(it.focused() + it.text(u"Text2(0)"_s) + it.label(u"Label41(0)"_s), u"Text2(0)9"_s);
    it.key(Qt::Key_Return); // goes on
    QCOMPARE(it.focused(), u"Text2(1)"_s);
    it.key(Qt::Key_7);
    it.key(Qt::Key_7);
    it.answers.expectMsgBox();
    it.press(4); // by the mouse, which the message holds up
    QCOMPARE(it.seen().constLast(), u"警告訊息|無此【假別代碼】,請重新輸入"_s);
    QCOMPARE(it.focused() + it.panel(2), u"Text2(1)新增資料"_s);
    QCOMPARE(it.rows(u"Holi02"_s), QStringList());
    it.press(4);
    QCOMPARE(it.rows(u"Holi02"_s), grants({{{u"SuitNo", u"9"}, {u"HoliNo", u"77"}}}));
    QCOMPARE(it.shown(u"TDBGrid1(1)"_s), QStringList{u"9|77|||"_s});
    QCOMPARE(it.panel(2), QString());
    QCOMPARE(it.seen().size(), 2);
    QCOMPARE(it.answers.trouble(), QString());
}

void Form4GrantsTest::refreshHidesGrantsWithoutParents() {
    Form4Fixture it;
    const QList<Fields> all{grant(u"1"_s, u"01"_s, 1, 3, 7), grant(u"1"_s, u"77"_s, 1, 3, 8),
                            grant(u"9"_s, u"01"_s, 1, 3, 9), grant(u"2"_s, u"03"_s, 1, 3, 10)};
    for (const Fields& each : all)
        insertRow(it.database(), u"Holi02"_s, each);
    it.open(GrantsTab);
    QCOMPARE(it.shown(u"TDBGrid1(1)"_s).size(), 4);
    it.press(10);
    QCOMPARE(it.shown(u"TDBGrid1(1)"_s),
             QStringList({u"公務人員請假規則|01|1|3|7"_s, u"勞工請假規則|03|1|3|10"_s}));
    QCOMPARE(it.panel(1), u"資料錄:1/2"_s);
    QCOMPARE(it.rows(u"Holi02"_s), grants(all)); // none is deleted
    it.press(10);
    QCOMPARE(it.shown(u"TDBGrid1(1)"_s).size(), 2);
    it.form().unload();
    OpenToolWindow(4);
    it.clickTab(GrantsTab);
    QCOMPARE(it.shown(u"TDBGrid1(1)"_s).size(), 4);
}

void Form4GrantsTest::aGrantOfTheJoinIsEditedAndDeleted() {
    Form4Fixture it;
    insertRow(it.database(), u"Holi02"_s, grant(u"1"_s, u"01"_s, 1, 3, 7));
    insertRow(it.database(), u"Holi02"_s, grant(u"2"_s, u"03"_s, 1, 3, 10));
    it.open(GrantsTab);
    it.press(10);
    it.press(9);
    it.press(1);
    QCOMPARE(it.panel(2), u"修改資料"_s);
    it.type(u"Text2(4)"_s, u"12"_s);
    it.press(4);
    QCOMPARE(it.rows(u"Holi02"_s),
             grants({grant(u"1"_s, u"01"_s, 1, 3, 7), grant(u"2"_s, u"03"_s, 1, 3, 12)}));
    it.press(6);
    it.answers.expectMsgBox(MsgAnswer::Yes);
    it.press(2);
    QCOMPARE(it.rows(u"Holi02"_s), grants({grant(u"2"_s, u"03"_s, 1, 3, 12)}));
    // The parents stay.
    QCOMPARE(it.rows(u"Holi01"_s).size() + it.rows(u"Syst03"_s).size(), 8);
}

void Form4GrantsTest::aGrantIsAddedOverTheJoin() {
    Form4Fixture it;
    insertRow(it.database(), u"Holi02"_s, grant(u"1"_s, u"01"_s, 1, 3, 7));
    it.open(GrantsTab);
    it.press(10);
    it.press(0);
    for (const auto& [index, text] :
         {std::pair(0, u"2"_s), {1, u"03"_s}, {2, u"0"_s}, {3, u"9"_s}, {4, u"14"_s}})
        it.type(u"Text2(%1)"_s.arg(index), text);
    it.press(4);
    QCOMPARE(it.rows(u"Holi02"_s),
             grants({grant(u"1"_s, u"01"_s, 1, 3, 7), grant(u"2"_s, u"03"_s, 0, 9, 14)}));
    QCOMPARE(it.shown(u"TDBGrid1(1)"_s),
             QStringList({u"公務人員請假規則|01|1|3|7"_s, u"勞工請假規則|03|0|9|14"_s}));
    QCOMPARE(it.panel(1) + it.panel(2) + it.text(u"Text2(4)"_s), u"資料錄:2/214"_s);
    QCOMPARE(it.rows(u"Holi01"_s).size() + it.rows(u"Syst03"_s).size(), 8); // the parents are not written
    QVERIFY(it.seen().isEmpty());
}

void Form4GrantsTest::aGrantIsNotDeleted_data() {
    QTest::addColumn<bool>("joined");
    QTest::newRow("of the plain list") << false;
    QTest::newRow("of the joined one") << true;
}

void Form4GrantsTest::aGrantIsNotDeleted() {
    QFETCH(const bool, joined);
    Form4Fixture it;
    const QList<Fields> all{grant(u"1"_s, u"01"_s, 1, 3, 7), grant(u"2"_s, u"03"_s, 1, 3, 10)};
    for (const Fields& each : all)
        insertRow(it.database(), u"Holi02"_s, each);
    refuseDeletes(it.store, "Holi02");
    it.open(GrantsTab);
    if (joined)
        it.press(10);
    it.answers.expectMsgBox(MsgAnswer::No);
    it.press(2);
    const QString question = u"確認刪除|確定刪除這筆資料?"_s;
    QCOMPARE(it.seen(), QStringList{question});
    QCOMPARE(it.answers.seen().constFirst().icon, MsgIcon::Question);
    QCOMPARE(it.rows(u"Holi02"_s), grants(all));
    it.answers.expectMsgBox(MsgAnswer::Yes).expectMsgBox();
    it.press(2);
    QCOMPARE(it.seen().mid(1), QStringList({question, u"錯誤訊息|無法刪除資料!"_s}));
    QCOMPARE(it.answers.seen().constLast().icon, MsgIcon::Exclamation);
    QCOMPARE(it.rows(u"Holi02"_s), grants(all));
    QCOMPARE(it.shown(u"TDBGrid1(1)"_s),
             QStringList({u"公務人員請假規則|01|1|3|7"_s, u"勞工請假規則|03|1|3|10"_s}));
    QCOMPARE(it.panel(1), u"資料錄:1/2"_s);
    QCOMPARE(it.answers.trouble(), QString());
}

void Form4GrantsTest::aLookupFillsItsField() {
    Form4Fixture it;
    it.open(GrantsTab);
    QCOMPARE(it.at<QPushButton>(u"Search(0)"_s).text() + it.at<QPushButton>(u"Search(1)"_s).text(),
             u"查詢查詢"_s);
    it.press(0);
    it.answers.expect(u"QFrmSuitNo"_s, [](QWidget& dialog) {
        clickRow(dialog, 1);
        clickOk(dialog);
    });
    it.press(u"Search(0)"_s);
    it.answers.expect(u"QFrmHoliNo"_s, [](QWidget& dialog) {
        clickRow(dialog, 2);
        clickOk(dialog);
    });
    it.press(u"Search(1)"_s);
    QCOMPARE(it.answers.trouble(), QString());
    QCOMPARE(it.text(u"Text2(0)"_s) + it.label(u"Label41(0)"_s), u"2勞工請假規則"_s);
    QCOMPARE(it.text(u"Text2(1)"_s) + it.label(u"Label41(1)"_s), u"03事假"_s);
}

void Form4GrantsTest::aSchemeAddedLaterShowsItsCode() {
    Form4Fixture it;
    insertRow(it.database(), u"Holi02"_s, grant(u"7"_s, u"01"_s, 1, 3, 7));
    it.open(GrantsTab);
    insertRow(it.database(), u"Syst03"_s, {{u"SuitNo", u"7"}, {u"SuitRule", u"新辦法"}});
    it.press(10);
    QCOMPARE(it.shown(u"TDBGrid1(1)"_s), QStringList{u"7|01|1|3|7"_s});
    it.form().unload();
    OpenToolWindow(4);
    it.clickTab(GrantsTab);
    QCOMPARE(it.shown(u"TDBGrid1(1)"_s), QStringList{u"新辦法|01|1|3|7"_s});
}

int main(int argc, char** argv) {
    return runTests<Form4GrantsTest>(argc, argv);
}

#include "Form4GrantsTest.moc"
