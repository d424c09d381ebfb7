#include "support/Contrast.h"
#include "support/Patience.h"
#include "windows/reports/Form7Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

/// The options of the reports, what each switches on and off, and how the fields behave.
class Form7FieldsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void optionsAsTheyStand();
    void atOpening();
    void whatAnOptionSwitches_data();
    void whatAnOptionSwitches();
    void anOptionLeavesTheMasksOfTheListsAlone();
    void hiddenMarksMoveNothing();
    void arrowKeysChooseAsClicksDo();
    void captionsFollowTheirBoxes();
    void aComboIsCutWhenItIsLeft();
    void aComboIsCutAtTheFirstHyphen();
    void everyComboIsCut();
    void aComboIsNotCutByItsList();
    void anEntryLeavesTheOthersAlone();
    void enterMovesOn();
    void everyOptionLeavesALegibleTab_data();
    void everyOptionLeavesALegibleTab();
    void aBadDateIsNotTold();
    void masksAndDates();
};

void Form7FieldsTest::optionsAsTheyStand() {
    Form7Fixture it;
    it.open();
    const std::array<QStringList, 6> captions{
        QStringList{u"職稱代碼一覽表"_s, u"單位代碼一覽表"_s, u"聘僱類別一覽表"_s, u"差假別一覽表"_s,
                    u"註銷原因一覽表"_s, u"新進員工一覽表"_s, u"離職員工一覽表"_s, u"班別員工一覽表"_s,
                    u"每月壽星一覽表"_s, u"員工基本資料明細"_s, u"單位別員工基本資料表"_s},
        QStringList{u"員工個人排班表"_s, u"單位員工排班表"_s, u"員工調班次數統計表"_s},
        QStringList{u"員工出勤狀況表"_s, u"單位別員工出勤狀況表"_s, u"個人別員工出勤狀況表"_s,
                    u"員工出勤異常表"_s, u"單位出勤異常表"_s, u"個人別員工出勤異常表"_s,
                    u"單位別原始打卡核對表"_s, u"個人別原始打卡核對表"_s, u"未上班人員名單"_s,
                    u"遲到早退人員名單"_s},
        QStringList{u"員工差假統計表"_s, u"單位差假統計表"_s, u"員工差假明細表"_s, u"單位差假明細表"_s,
                    u"抽查總表"_s, u"員工勤惰紀錄卡"_s},
        QStringList{u"單位員工註銷次數統計表"_s, u"員工註銷明細表"_s, u"單位員工註銷超次異常表"_s,
                    u"單位員工註銷次數累計表"_s},
        QStringList{u"員工加班明細表"_s, u"單位員工加班統計表"_s, u"個人別員工加班統計表"_s,
                    u"單位加班時數統計表"_s}};
    for (int tab = 0; tab < 6; ++tab) {
        const QStringList& expected = captions.at(static_cast<std::size_t>(tab));
        for (int index = 0; index < expected.size(); ++index) {
            QCOMPARE(it.option(tab, index).text(), expected.at(index));
            QCOMPARE(it.option(tab, index).toolTip(),
                     QChar(u'A' + tab) + QStringLiteral("%1").arg(index + 1, 2, 10, QLatin1Char('0')));
            QCOMPARE(it.option(tab, index).isChecked(), index == 0);
        }
        QCOMPARE(expected.size(), qsizetype(OptionCounts.at(static_cast<std::size_t>(tab))));
        QVERIFY(!it.form().findChild<QWidget*>(u"Option%1(%2)"_s.arg(tab + 1).arg(expected.size())));
    }
    const QStringList marks{u"全日"_s, u"上午上班"_s, u"上午下班"_s, u"下午上班"_s, u"下午下班"_s};
    for (int index = 0; index < marks.size(); ++index) {
        QCOMPARE(it.at<QRadioButton>(u"OptionTS(%1)"_s.arg(index)).text(), marks.at(index));
        QCOMPARE(it.at<QRadioButton>(u"OptionTS(%1)"_s.arg(index)).isChecked(), index == 0);
    }
}

void Form7FieldsTest::atOpening() {
    Form7Fixture it;
    it.open();
    const QStringList states{
        u"M..23 C......."_s,          u"M01 C0123"_s,  u"M01 C012345"_s, u"M01 C012345 L 假    別："_s,
        u"M01 C0123. L 註銷原因："_s, u"M01 C012345"_s};
    for (int tab = 0; tab < 6; ++tab) {
        it.clickTab(tab);
        QCOMPARE(it.fields(tab), states.at(tab));
    }
}

void Form7FieldsTest::whatAnOptionSwitches_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<int>("option");
    QTest::addColumn<QString>("state");
    const auto rows = [](int tab, const QList<int>& options, const char16_t* state) {
        for (const int option : options)
            QTest::addRow("tab %d, option %d", tab, option) << tab << option << QString::fromUtf16(state);
    };
    rows(0, {0, 1, 2, 3, 4}, u"M..23 C......."); // after the opening; see the next test
    rows(0, {5}, u"M01.. C.......");
    rows(0, {6}, u"M..23 C.......");
    rows(0, {7}, u"M.... C01.....");
    rows(0, {8}, u"M.... C......6");
    rows(0, {9}, u"M.... C..2345.");
    rows(0, {10}, u"M.... C..23...");
    rows(1, {0, 1, 2}, u"M01 C0123");
    rows(2, {0, 1, 2, 6, 7, 8, 9}, u"M01 C012345");
    rows(2, {3, 4, 5}, u"M01 C012345 marks");
    rows(3, {0, 1, 2, 3}, u"M01 C012345 L 假    別：");
    rows(3, {4}, u"M0. C012345");
    rows(3, {5}, u"M01 C0.....");
    rows(4, {0, 1, 3}, u"M01 C0123. L 註銷原因：");
    rows(4, {2}, u"M01 C01234 L 註銷原因：");
    rows(5, {0, 1, 2, 3}, u"M01 C012345");
}

/// By a click on the option as the window has opened, and again after each of the others of the tab.
void Form7FieldsTest::whatAnOptionSwitches() {
    QFETCH(const int, tab);
    QFETCH(const int, option);
    QFETCH(const QString, state);
    Form7Fixture it;
    it.open(tab);
    it.choose(tab, option);
    QVERIFY(it.option(tab, option).isChecked());
    QCOMPARE(it.fields(tab), state);
    if (tab == 0 && option < 5)
        return; // which differ by what was there before
    for (int other = 0; other < OptionCounts.at(static_cast<std::size_t>(tab)); ++other) {
        it.choose(tab, other);
        it.choose(tab, option);
        QCOMPARE(it.fields(tab), state);
    }
}

void Form7FieldsTest::anOptionLeavesTheMasksOfTheListsAlone() {
    Form7Fixture it;
    it.open();
    for (int option = 0; option < 5; ++option) {
        it.choose(0, 5);
        it.choose(0, option);
        QCOMPARE(it.fields(0), u"M.... C......."_s);
        it.choose(0, 6);
        it.choose(0, option);
        QCOMPARE(it.fields(0), u"M..23 C......."_s);
        it.choose(0, 9);
        it.choose(0, option);
        QCOMPARE(it.fields(0), u"M.... C......."_s);
    }
}

void Form7FieldsTest::hiddenMarksMoveNothing() {
    Form7Fixture it;
    it.open(2);
    QWidgetList shown;
    for (QWidget* each : it.tabs().currentWidget()->findChildren<QWidget*>()) {
        if (each->isVisible())
            shown << each;
    }
    QVERIFY(shown.size() > 30);
    const auto places = [&] {
        QCoreApplication::processEvents();
        QList<QRect> all;
        for (const QWidget* each : shown)
            all << QRect(each->mapTo(&it.form(), QPoint()), each->size());
        return all;
    };
    const QList<QRect> without = places();
    it.choose(2, 3);
    QVERIFY(it.at(u"FrameTS"_s).isVisible());
    QCOMPARE(places(), without);
}

void Form7FieldsTest::arrowKeysChooseAsClicksDo() {
    Form7Fixture it;
    it.open(2);
    it.choose(2, 2);
    it.key(Qt::Key_Down);
    QVERIFY(it.option(2, 3).isChecked());
    QCOMPARE(it.fields(2), u"M01 C012345 marks"_s);
    it.setPeriod(2, {2010, 3, 1}, {2010, 3, 2});
    it.print(2);
    QCOMPARE(it.file(), u"C04.rpt"_s);
}

void Form7FieldsTest::captionsFollowTheirBoxes() {
    Form7Fixture it;
    it.open();
    const auto pale = [&](int tab) {
        QStringList captions;
        for (const QLabel* each : it.tabs().widget(tab)->findChildren<QLabel*>()) {
            if (!each->isEnabled())
                captions << each->text();
        }
        return captions;
    };
    it.choose(0, 9);
    QCOMPARE(pale(0), QStringList({u"到職日期："_s, u"離職日期："_s, u"班    別："_s, u"月    份："_s}));
    it.clickTab(3);
    it.choose(3, 5);
    QCOMPARE(pale(3), QStringList({u"單    位："_s, u"聘僱類別："_s}));
}

void Form7FieldsTest::aComboIsCutWhenItIsLeft() {
    Form7Fixture it;
    insertRow(it.database(), u"Base02"_s, {{u"UnitNo", u"0001"}, {u"Unit", u"總務部"}});
    it.open(5);
    for (int tab = 0; tab < 6; ++tab) {
        it.clickTab(tab);
        if (tab == 0)
            it.choose(0, 9);
        const int unit = tab == 0 ? 3 : 2;
        it.combo(tab, unit).setFocus();
        it.key(Qt::Key_Down); // chooses the first entry
        QCOMPARE(it.combo(tab, unit).currentText(), u"0001-總務部"_s);
        it.key(Qt::Key_Tab);
        QCOMPARE(it.combo(tab, unit).currentText(), u"0001"_s);
    }
    // By the mouse, and by turning to another tab as well.
    it.combo(5, 2).setFocus();
    it.combo(5, 2).setEditText(u"0001-總務部"_s);
    it.clickTab(4);
    QCOMPARE(it.combo(5, 2).currentText(), u"0001"_s);
    it.combo(4, 3).setFocus();
    it.combo(4, 3).setEditText(u"0001-總務部"_s);
    click(it.mask(4, 0));
    QCOMPARE(it.combo(4, 3).currentText(), u"0001"_s);
}

void Form7FieldsTest::aComboIsCutAtTheFirstHyphen() {
    Form7Fixture it;
    it.open(1);
    const QList<std::pair<QString, QString>> texts{{u"A-1-總務部"_s, u"A"_s},
                                                   {u"-總務部"_s, QString()},
                                                   {u"A1－總務部"_s, u"A1－總務部"_s}, // no hyphen
                                                   {QString(), QString()}};
    for (const auto& [typed, left] : texts) {
        it.combo(1, 2).setFocus();
        it.combo(1, 2).setEditText(typed);
        it.key(Qt::Key_Tab);
        QCOMPARE(it.combo(1, 2).currentText(), left);
    }
}

void Form7FieldsTest::everyComboIsCut() {
    const std::array<QList<int>, 6> options{QList<int>{7, 8, 9}, {0}, {0}, {0}, {2}, {0}};
    Form7Fixture it;
    it.open();
    for (int tab = 0; tab < 6; ++tab) {
        it.clickTab(tab);
        QSet<int> cut;
        for (const int option : options.at(static_cast<std::size_t>(tab))) {
            it.choose(tab, option);
            for (int index = 0; index < Form7Fixture::comboCount(tab); ++index) {
                if (!it.combo(tab, index).isEnabled())
                    continue;
                it.combo(tab, index).setFocus();
                it.combo(tab, index).setEditText(u"A-1-x"_s);
                it.key(Qt::Key_Tab);
                QCOMPARE(it.combo(tab, index).currentText(), u"A"_s);
                cut << index;
            }
        }
        QCOMPARE(cut.size(), qsizetype(Form7Fixture::comboCount(tab)));
    }
}

void Form7FieldsTest::aComboIsNotCutByItsList() {
    Form7Fixture it;
    insertRow(it.database(), u"Base02"_s, {{u"UnitNo", u"0001"}, {u"Unit", u"總務部"}});
    it.open(1);
    CodeCombo& units = it.combo(1, 2);
    click(units);
    units.showPopup();
    QAbstractItemView* entries = units.view();
    QTRY_VERIFY_WITH_TIMEOUT(entries->isVisible(), PatienceMs);
    QTest::keyClick(entries, Qt::Key_Home);
    QTest::keyClick(entries, Qt::Key_Return);
    QTRY_VERIFY_WITH_TIMEOUT(!entries->isVisible(), PatienceMs);
    QCOMPARE(units.currentText(), u"0001-總務部"_s);
    QCOMPARE(it.combo(1, 3).currentText(), u"ZZZZ"_s);
}

/// The boxes of a kind list one set of entries; their texts are their own.
void Form7FieldsTest::anEntryLeavesTheOthersAlone() {
    Form7Fixture it;
    addEmployee(it.database(), u"10001"_s, {{u"EmpName", u"王小明"}});
    it.open(5);
    it.combo(5, 0).setFocus();
    it.key(Qt::Key_Down);
    QCOMPARE(it.combo(5, 0).currentText(), u"10001-王小明"_s);
    for (int tab = 0; tab < 5; ++tab) {
        const int first = tab == 0 ? 4 : 0;
        QCOMPARE(it.combo(tab, first).currentText(), u"000000"_s);
        QCOMPARE(it.combo(tab, first + 1).currentText(), u"ZZZZZZ"_s);
    }
    QCOMPARE(it.combo(5, 1).currentText(), u"ZZZZZZ"_s);
}

void Form7FieldsTest::enterMovesOn() {
    Form7Fixture it;
    addCodes(it.database(), u"Holi01"_s, 2);
    it.open(3);
    it.option(3, 0).setFocus();
    const QStringList way{u"List1"_s,     u"Mk4(0)"_s,    u"TDBD4(0)"_s,  u"Mk4(1)"_s,
                          u"TDBD4(1)"_s,  u"Combo4(0)"_s, u"Combo4(1)"_s, u"Combo4(2)"_s,
                          u"Combo4(3)"_s, u"Combo4(4)"_s, u"Combo4(5)"_s, u"Cmd4(0)"_s};
    for (const QString& next : way) {
        it.key(Qt::Key_Return);
        QCOMPARE(it.focused(), next);
    }
    QCOMPARE(it.list(3).selectedItems().size(), 2);
}

void Form7FieldsTest::everyOptionLeavesALegibleTab_data() {
    QTest::addColumn<int>("tab");
    for (int tab = 0; tab < 6; ++tab)
        QTest::addRow("tab %d", tab) << tab;
}

/// What is off can be read all the same, and Tab comes to all that is on.
void Form7FieldsTest::everyOptionLeavesALegibleTab() {
    constexpr double LeastContrast = 4.5;
    QFETCH(const int, tab);
    Form7Fixture it;
    addCodes(it.database(), u"Holi01"_s, 3);
    addCodes(it.database(), u"Canc01"_s, 3);
    it.open(tab);
    for (int option = 0; option < OptionCounts.at(static_cast<std::size_t>(tab)); ++option) {
        it.choose(tab, option);
        QCoreApplication::processEvents();
        const QStringList faults = controlFaults(it.form()) + tabFaults(it.form());
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(u'\n')));
        const QImage picture = it.form().grab().toImage();
        for (const ShownText& text : shownTexts(it.form()))
            QVERIFY2(contrastIn(picture, text.place) >= LeastContrast, qPrintable(text.control));
        if (tab == 3 || tab == 4) {
            const QRect entry = it.list(tab).visualItemRect(it.list(tab).item(0));
            QVERIFY(contrastIn(it.list(tab).viewport()->grab(entry).toImage(), {QPoint(), entry.size()}) >=
                    LeastContrast);
        }
    }
}

void Form7FieldsTest::aBadDateIsNotTold() {
    Form7Fixture it;
    it.open(1);
    it.date(1, 0).setDate({2001, 1, 31});
    QCOMPARE(it.mask(1, 0).value(), u"900131"_s);
    click(it.mask(1, 0));
    it.key(Qt::Key_Home);
    QTest::keyClicks(&it.mask(1, 0), u"901345"_s);
    it.key(Qt::Key_Tab);
    QCOMPARE(it.answers.seen().size(), 0);
    QCOMPARE(it.focused(), u"TDBD2(0)"_s);
    QCOMPARE(it.mask(1, 0).text(), u"90/13/45"_s);
    QCOMPARE(it.date(1, 0).date(), QDate(2001, 1, 31));
    // The print tells the one and asks for the other.
    it.date(1, 1).setDate({2001, 2, 28});
    it.print(1);
    QCOMPARE(it.named(u"Sdate"_s), u"90/13/45"_s);
    QCOMPARE(it.named(u"Edate"_s), u"90/02/28"_s);
    QVERIFY2(it.formula().contains(u">= date(2001,1,31)"_s), qPrintable(it.formula()));
}

void Form7FieldsTest::masksAndDates() {
    Form7Fixture it;
    it.open();
    for (int tab = 0; tab < 6; ++tab) {
        it.clickTab(tab);
        for (int index = 0; index < (tab == 0 ? 4 : 2); ++index) {
            it.mask(tab, index).setValue(u"990305"_s);
            QCOMPARE(it.date(tab, index).date(), QDate(2010, 3, 5));
            // From 2011 on the mask cannot hold it.
            it.date(tab, index).setDate({2026, 1, 5});
            QCOMPARE(it.mask(tab, index).value(), QString());
            QCOMPARE(it.date(tab, index).date(), QDate(2026, 1, 5));
            it.date(tab, index).setDate({});
            QCOMPARE(it.mask(tab, index).value(), QString());
            it.mask(tab, index).setValue(u"900131"_s);
            it.mask(tab, index).clear();
            QCOMPARE(it.date(tab, index).date(), QDate(2001, 1, 31));
        }
    }
}

int main(int argc, char** argv) {
    return runTests<Form7FieldsTest>(argc, argv);
}

#include "Form7FieldsTest.moc"
