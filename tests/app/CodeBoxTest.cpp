#include "app/CodeBox.h"
#include "app/EnterAsTab.h"
#include "app/LookupFixture.h"
#include "app/RecordFixture.h"

#include <QGridLayout>

Q_DECLARE_METATYPE(pontrel::CodeCheck)
Q_DECLARE_METATYPE(pontrel::CodeRefusal)
Q_DECLARE_METATYPE(pontrel::LookupKey)

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString Unknown = u"無此【註銷代碼】,請重新輸入"_s;
const QString Box = u"Text5(1)"_s;
const QString Name = u"Label40(7)"_s;

/// Two code boxes with a plain one between them, over the entries of write-offs.
class CodeTab : public RecordTab {
  public:
    CodeTab(const CodeBoxRow& firstRow, const CodeBoxRow& secondRow)
        : RecordTab({.index = 0, .caption = u"註銷明細"_s, .table = u"Canc02"_s, .frameCaption = u"編輯區"_s})
        , first(new CodeBox(fields(), firstRow)) {
        auto* grid = new QGridLayout(&frame());
        QLineEdit* plain = fields().box(u"Text5(0)"_s, u"員工代號"_s, u"EmpNo"_s, 60);
        second = new CodeBox(fields(), secondRow);
        first->addTo(*grid, 0, 0);
        grid->addWidget(plain, 1, 1);
        second->addTo(*grid, 2, 0);
        setFirstField(plain);
        rows().addWidget(&frame());
        rows().addWidget(&bar());
        placeBehind(bar().button(BarAction::Save), {first->search(), second->search()});
    }

    void connectControls(FormState& form) override {
        state = &form;
        first->connectTo(form);
        second->connectTo(form);
    }

    CodeBox* first;
    CodeBox* second;
    FormState* state = nullptr;
};

class CodeWindow : public RecordWindow {
  public:
    CodeWindow(QWidget* parent, CodeTab* tab) : RecordWindow(parent, u"Form1"_s, u"記錄"_s, Opening::AtLoad) {
        addTab(tab);
        completeTabs();
    }
};

CodeBoxRow reasonRow(int index, CodeCheck check, CodeRefusal refusal) {
    return {.number = index,
            .kind = LookupKind::QFrmCnlNo,
            .box = u"Text5(%1)"_s.arg(index),
            .search = u"Search(%1)"_s.arg(index + 5),
            .label = u"Label40(%1)"_s.arg(8 - index),
            .caption = u"上午上班："_s,
            .column = u"CnlNo%1"_s.arg(index),
            .spokenName = u"註銷代碼%1"_s.arg(index),
            .width = 60,
            .check = check,
            .refusal = refusal};
}

/// A new row being entered, with two reasons to choose from.
class Fixture : public RecordFixture {
  public:
    explicit Fixture(CodeCheck check = CodeCheck::Leaving, CodeRefusal refusal = CodeRefusal::FocusBack)
        : first(reasonRow(1, check, refusal)), second(reasonRow(2, check, refusal)) {
        clearPicks();
        for (const auto& [code, name] : {std::pair(u"1"_s, u"忘記刷卡"_s), std::pair(u"2"_s, u"公出"_s)})
            insertRow(store.database(), u"Canc01"_s, {{u"CnlNo", code}, {u"CnlName", name}});
    }
    ~Fixture() { clearPicks(); }

    void openNew(const std::function<void(CodeTab&)>& prepare = {}) {
        openOther([&](QWidget* parent) -> Window* {
            tab = new CodeTab(first, second);
            if (prepare)
                prepare(*tab);
            return new CodeWindow(parent, tab);
        });
        press(u"CtrlCmd0(0)"_s);
    }

    CodeBoxRow first;
    CodeBoxRow second;
    CodeTab* tab = nullptr;
};

} // namespace

/// What a code box does with its code: the name, the mark, the message and what follows it.
class CodeBoxTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aKnownCodeShowsItsNameAndAnUnknownOneKeepsIt();
    void anUnknownCodeIsTold_data();
    void anUnknownCodeIsTold();
    void afterTheMessageTypingReplacesTheCode();
    void anUnknownCodeIsKeptAfterTheMessage();
    void aCodeEmptiedByHandIsUnknown();
    void aLookupWithoutAPickKeepsNobody();
    void theNameOfARowIsShownAnew();
    void aBoxMayTakeLessThanItsColumn();
    void whatARowBringsOrARoutineClearsIsNotTold();
    void onlyTheBoxChangedLastIsTold();
    void boxesOfOneNumberShareTheMark();
    void enterOnAKnownCodeMovesOn();
    void enterOnAKnownCodeRunsTheRoutineOfThePage();
    void theButtonWritesThePick_data();
    void theButtonWritesThePick();
    void thePageMayReadMoreOfTheRow();
    void aBoxWithoutLabelAndCheckLooksNothingUp();
    void everyKindHasItsWord();
    void theNameOfACodeIsFoundByItself();
};

void CodeBoxTest::aKnownCodeShowsItsNameAndAnUnknownOneKeepsIt() {
    Fixture fixture;
    fixture.openNew();
    fixture.type(Box, u"2"_s);
    QCOMPARE(fixture.label(Name), u"公出"_s);
    fixture.type(Box, u"9"_s);
    QCOMPARE(fixture.label(Name), u"公出"_s);
    QVERIFY(fixture.answers.seen().isEmpty());
}

void CodeBoxTest::anUnknownCodeIsTold_data() {
    QTest::addColumn<CodeCheck>("check");
    QTest::addColumn<CodeRefusal>("refusal");
    QTest::addColumn<int>("key");
    QTest::addColumn<QStringList>("told");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("focus");
    const QString message = u"警告訊息|"_s + Unknown;
    const QStringList asked{message, u"QFrmCnlNo"_s};
    const QString next = u"Text5(0)"_s; // the one that Enter and Tab lead to
    QTest::addRow("never") << CodeCheck::Never << CodeRefusal::FocusBack << int(Qt::Key_Tab) << QStringList()
                           << u"9"_s << next;
    QTest::addRow("leaving, move on") << CodeCheck::Leaving << CodeRefusal::MoveOn << int(Qt::Key_Tab)
                                      << QStringList{message} << u"9"_s << next;
    QTest::addRow("leaving, focus back") << CodeCheck::Leaving << CodeRefusal::FocusBack << int(Qt::Key_Tab)
                                         << QStringList{message} << u"9"_s << Box;
    QTest::addRow("leaving by Enter") << CodeCheck::Leaving << CodeRefusal::FocusBack << int(Qt::Key_Return)
                                      << QStringList{message} << u"9"_s << Box;
    QTest::addRow("leaving, lookup") << CodeCheck::Leaving << CodeRefusal::Lookup << int(Qt::Key_Tab) << asked
                                     << u"1"_s << next;
    QTest::addRow("leaving, lookup and focus")
        << CodeCheck::Leaving << CodeRefusal::LookupAndFocus << int(Qt::Key_Tab) << asked << u"1"_s << Box;
    QTest::addRow("Enter, focus back") << CodeCheck::Enter << CodeRefusal::FocusBack << int(Qt::Key_Enter)
                                       << QStringList{message} << u"9"_s << Box;
    QTest::addRow("Enter is not pressed")
        << CodeCheck::Enter << CodeRefusal::FocusBack << int(Qt::Key_Tab) << QStringList() << u"9"_s << next;
}

void CodeBoxTest::anUnknownCodeIsTold() {
    QFETCH(const CodeCheck, check);
    QFETCH(const CodeRefusal, refusal);
    QFETCH(const int, key);
    QFETCH(const QStringList, told);
    QFETCH(const QString, text);
    QFETCH(const QString, focus);
    Fixture fixture(check, refusal);
    fixture.openNew();
    fixture.type(Box, u"9"_s);
    for (const QString& dialog : told) {
        if (dialog == u"QFrmCnlNo"_s)
            fixture.answers.expectClick(dialog, u"Command1(0)"_s);
        else
            fixture.answers.expectMsgBox();
    }
    fixture.key(static_cast<Qt::Key>(key));
    QCOMPARE(fixture.seen(), told);
    QCOMPARE(fixture.text(Box), text);
    QCOMPARE(fixture.label(Name), text == u"1"_s ? u"忘記刷卡"_s : QString());
    QCOMPARE(fixture.focused(), focus);
    QCOMPARE(fixture.answers.trouble(), QString());
}

void CodeBoxTest::afterTheMessageTypingReplacesTheCode() {
    Fixture fixture;
    fixture.openNew();
    fixture.type(Box, u"9"_s);
    fixture.answers.expectMsgBox();
    fixture.key(Qt::Key_Tab);
    fixture.key(Qt::Key_2);
    QCOMPARE(fixture.text(Box), u"2"_s);
    fixture.key(Qt::Key_Tab);
    QCOMPARE(fixture.focused(), u"Text5(0)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
}

void CodeBoxTest::anUnknownCodeIsKeptAfterTheMessage() {
    Fixture fixture(CodeCheck::Leaving, CodeRefusal::FocusBackOnce);
    fixture.openNew();
    fixture.type(Box, u"9"_s);
    fixture.answers.expectMsgBox();
    fixture.key(Qt::Key_Tab);
    QCOMPARE(fixture.focused() + fixture.text(Box), Box + u"9"_s);
    fixture.key(Qt::Key_Tab);
    QCOMPARE(fixture.focused() + fixture.text(Box), u"Text5(0)9"_s);
    // Another unknown code is told again.
    fixture.type(Box, u"8"_s);
    fixture.answers.expectMsgBox();
    fixture.key(Qt::Key_Tab);
    QCOMPARE(fixture.focused(), Box);
    QCOMPARE(fixture.seen(), QStringList(2, u"警告訊息|"_s + Unknown));
    QCOMPARE(fixture.answers.trouble(), QString());
}

void CodeBoxTest::aCodeEmptiedByHandIsUnknown() {
    Fixture fixture;
    fixture.openNew();
    fixture.type(Box, u"2"_s);
    fixture.key(Qt::Key_Backspace);
    fixture.answers.expectMsgBox();
    fixture.key(Qt::Key_Tab);
    QCOMPARE(fixture.seen(), QStringList{u"警告訊息|"_s + Unknown});
    QCOMPARE(fixture.focused(), Box);
}

void CodeBoxTest::aLookupWithoutAPickKeepsNobody() {
    for (const bool emptyBefore : {false, true}) {
        Fixture fixture(CodeCheck::Leaving, CodeRefusal::LookupAndFocus);
        fixture.store.database().execute(u"delete * from Canc01"_s);
        fixture.openNew();
        fixture.type(Box, u"9"_s);
        if (emptyBefore)
            fixture.key(Qt::Key_Backspace);
        fixture.answers.expectMsgBox().expectClick(u"QFrmCnlNo"_s, u"Command1(0)"_s);
        fixture.key(Qt::Key_Tab);
        QCOMPARE(fixture.text(Box) + fixture.focused(), Box);
        fixture.key(Qt::Key_Tab);
        QVERIFY(fixture.focused() != Box);
        QCOMPARE(fixture.seen(), QStringList({u"警告訊息|"_s + Unknown, u"QFrmCnlNo"_s}));
        // What is typed next counts as before.
        fixture.type(Box, u"9"_s);
        fixture.answers.expectMsgBox().expectClick(u"QFrmCnlNo"_s, u"Command1(1)"_s);
        fixture.key(Qt::Key_Tab);
        QCOMPARE(fixture.seen().size(), 4);
    }
}

void CodeBoxTest::theNameOfARowIsShownAnew() {
    Fixture fixture;
    fixture.openNew();
    fixture.type(Box, u"1"_s);
    fixture.at<QLineEdit>(Box).setText({});
    QCOMPARE(fixture.label(Name), u"忘記刷卡"_s);
    fixture.tab->first->showNameOfRow();
    QCOMPARE(fixture.label(Name), QString());
    fixture.at<QLineEdit>(Box).setText(u"2"_s);
    fixture.at<QLabel>(Name).clear();
    fixture.tab->first->showNameOfRow();
    QCOMPARE(fixture.label(Name), u"公出"_s);
}

void CodeBoxTest::aBoxMayTakeLessThanItsColumn() {
    Fixture fixture;
    fixture.first.length = 1;
    fixture.openNew();
    fixture.type(Box, u"12"_s);
    QCOMPARE(fixture.text(Box) + fixture.label(Name), u"1忘記刷卡"_s);
    fixture.type(u"Text5(2)"_s, u"12"_s);
    QCOMPARE(fixture.text(u"Text5(2)"_s), u"12"_s);
    QVERIFY(fixture.seen().isEmpty());
}

void CodeBoxTest::whatARowBringsOrARoutineClearsIsNotTold() {
    Fixture fixture;
    insertRow(fixture.store.database(), u"Canc02"_s,
              {{u"EmpNo", u"A"}, {u"CnlDate", QDate(2005, 3, 1)}, {u"CnlNo1", u"9"}});
    fixture.openNew(); // empties the box that the row has filled with an unknown code
    fixture.at(Box).setFocus();
    fixture.key(Qt::Key_Tab);
    fixture.press(u"CtrlCmd0(3)"_s);
    fixture.press(u"CtrlCmd0(1)"_s);
    QCOMPARE(fixture.text(Box), u"9"_s);
    fixture.at(Box).setFocus();
    fixture.key(Qt::Key_Tab);
    fixture.type(Box, u"1"_s);
    fixture.tab->first->clear();
    QCOMPARE(fixture.text(Box), QString());
    QCOMPARE(fixture.label(Name), QString());
    fixture.key(Qt::Key_Tab);
    QCOMPARE(fixture.seen(), QStringList());
    QCOMPARE(fixture.focused(), u"Text5(0)"_s);
}

void CodeBoxTest::onlyTheBoxChangedLastIsTold() {
    Fixture fixture;
    fixture.openNew();
    fixture.type(Box, u"9"_s);
    typeInto(fixture.box(u"Text5(2)"_s), u"1"_s); // by a routine: the focus stays
    fixture.key(Qt::Key_Tab);
    QCOMPARE(fixture.seen(), QStringList());
}

void CodeBoxTest::boxesOfOneNumberShareTheMark() {
    Fixture fixture(CodeCheck::Enter);
    fixture.second.number = fixture.first.number;
    fixture.openNew();
    fixture.type(Box, u"9"_s);
    fixture.at(u"Text5(2)"_s).setFocus();
    fixture.answers.expectMsgBox();
    fixture.key(Qt::Key_Return);
    QCOMPARE(fixture.seen(), QStringList{u"警告訊息|"_s + Unknown});
    QCOMPARE(fixture.focused(), u"Text5(2)"_s);
}

void CodeBoxTest::enterOnAKnownCodeMovesOn() {
    Fixture fixture(CodeCheck::Enter);
    fixture.openNew();
    fixture.type(Box, u"1"_s);
    fixture.key(Qt::Key_Return);
    QCOMPARE(fixture.focused(), u"Text5(0)"_s);
}

void CodeBoxTest::enterOnAKnownCodeRunsTheRoutineOfThePage() {
    Fixture fixture(CodeCheck::Enter);
    QStringList asked;
    fixture.openNew(
        [&](CodeTab& tab) { tab.first->onEnter([&asked, code = tab.first] { asked << code->text(); }); });
    fixture.type(Box, u"1"_s);
    fixture.key(Qt::Key_Return);
    QCOMPARE(asked, QStringList{u"1"_s});
    QCOMPARE(fixture.focused(), Box);
    fixture.type(Box, u"9"_s);
    fixture.answers.expectMsgBox();
    fixture.key(Qt::Key_Return);
    QCOMPARE(asked, QStringList{u"1"_s});
    QCOMPARE(fixture.seen(), QStringList{u"警告訊息|"_s + Unknown});
}

void CodeBoxTest::theButtonWritesThePick_data() {
    QTest::addColumn<LookupKey>("key");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("focus");
    QTest::addColumn<int>("entered");
    const QString search = u"Search(6)"_s;
    QTest::addRow("nothing then") << LookupKey::None << u"Command1(0)"_s << u"1"_s << search << 0;
    QTest::addRow("Tab") << LookupKey::Tab << u"Command1(0)"_s << u"1"_s << u"Text5(0)"_s << 0;
    QTest::addRow("Enter") << LookupKey::Enter << u"Command1(0)"_s << u"1"_s << Box << 1;
    QTest::addRow("cancelled") << LookupKey::None << u"Command1(1)"_s << u"7"_s << search << 0;
}

void CodeBoxTest::theButtonWritesThePick() {
    QFETCH(const LookupKey, key);
    QFETCH(const QString, button);
    QFETCH(const QString, text);
    QFETCH(const QString, focus);
    QFETCH(const int, entered);
    Fixture fixture(CodeCheck::Enter);
    fixture.first.afterSearch = key;
    gPickCnlNo = u"7"_s;
    int times = 0;
    fixture.openNew([&](CodeTab& tab) {
        if (key == LookupKey::Enter)
            tab.first->onEnter([&times] { ++times; });
    });
    fixture.answers.expectClick(u"QFrmCnlNo"_s, button);
    fixture.press(u"Search(6)"_s);
    QCOMPARE(fixture.text(Box), text);
    QCOMPARE(fixture.focused(), focus);
    QCOMPARE(times, entered);
    QCOMPARE(fixture.seen(), QStringList{u"QFrmCnlNo"_s});
}

void CodeBoxTest::thePageMayReadMoreOfTheRow() {
    Fixture fixture;
    fixture.store.database().execute(u"Update Canc01 Set [Memo]='note' Where CnlNo='2'"_s);
    QStringList memos;
    fixture.openNew([&](CodeTab& tab) {
        tab.first->onFound(u"[Memo]"_s, [&memos](const Rows& row) { memos << row.at(0, u"Memo").joined(); });
    });
    fixture.type(Box, u"2"_s);
    fixture.type(Box, u"9"_s);
    QCOMPARE(memos, QStringList{u"note"_s});
    QCOMPARE(fixture.label(Name), u"公出"_s);
}

void CodeBoxTest::aBoxWithoutLabelAndCheckLooksNothingUp() {
    Fixture fixture(CodeCheck::Never);
    fixture.first.label.clear();
    fixture.openNew();
    fixture.type(Box, u"'"_s); // which a lookup could not join
    QCOMPARE(fixture.tab->state->mark, 0);
    fixture.answers.expectClick(u"QFrmCnlNo"_s, u"Command1(0)"_s);
    fixture.press(u"Search(6)"_s);
    QCOMPARE(fixture.text(Box), u"1"_s);
}

void CodeBoxTest::everyKindHasItsWord() {
    const QStringList words{u"假別代碼"_s,     u"時段代碼"_s,     u"單位代碼"_s, u"班別代碼"_s, u"職稱代碼"_s,
                            u"聘雇類別代碼"_s, u"適用辦法代碼"_s, u"註銷代碼"_s, u"員工代碼"_s};
    for (int kind = 0; kind < words.size(); ++kind)
        QCOMPARE(lookupTexts(static_cast<LookupKind>(kind)).codeWord, words.at(kind));
}

void CodeBoxTest::theNameOfACodeIsFoundByItself() {
    Fixture fixture;
    fixture.openNew();
    QCOMPARE(nameOfCode(LookupKind::QFrmCnlNo, u"2"_s), std::optional(u"公出"_s));
    QCOMPARE(nameOfCode(LookupKind::QFrmCnlNo, u"9"_s), std::optional<QString>());
}

int main(int argc, char** argv) {
    return runTests<CodeBoxTest>(argc, argv);
}

#include "CodeBoxTest.moc"
