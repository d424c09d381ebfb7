#include "app/Prompts.h"

#include "store/RunTimeError.h"
#include "support/AppSupport.h"
#include "support/Errors.h"
#include "support/Patience.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QContextMenuEvent>
#include <QDir>
#include <QFileDialog>
#include <QFontInfo>
#include <QLineEdit>
#include <QPushButton>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

class PromptsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aMessageShowsTextTitleAndOneButton();
    void theTitleIsTheProgramsWhereNoneIsGiven();
    void pictures_data();
    void pictures();
    void aQuestionIsAnsweredByItsButtons();
    void enterPressesTheDefaultButton();
    void escapeAnswersOkOrNo();
    void aMessageIsPlainText();
    void aMessageBlocksTheWindowBeneath();
    void aFileIsChosenByItsPath();
    void aCancelledFileDialogGivesNothing();
    void aFileThatDoesNotExistIsNotTaken();
    void theFileDialogKeepsToItsFilter();
    void theNewestFileComesFirst();
    void theFileDialogOnlyChooses_data();
    void theFileDialogOnlyChooses();
    void theInputBoxGivesItsText();
    void thePointerIsAStateAndNotAStack();
    void standardTextsAreInTraditionalChinese();
    void buttonsStandInOneOrderWithoutPictures();
    void aRunTimeErrorIsToldWithNumberAndText();
    void anErrorInsideTheMessageOfAnErrorEndsAtOnce();
    void guardedPassesWhatIsNoRunTimeError();
    void theEndLeavesThePointerAsItIs();
    void theEndClosesAllConnections();
};

void PromptsTest::aMessageShowsTextTitleAndOneButton() {
    PromptAnswers answers;
    answers.expectMsgBox();
    QCOMPARE(MsgBox(u"資料已轉入成功!!"_s, u"警告訊息"_s), MsgAnswer::Ok);
    QCOMPARE(answers.trouble(), QString());
    const SeenPrompt& seen = answers.seen().constFirst();
    QCOMPARE(seen.objectName, u"MsgBox"_s);
    QCOMPARE(seen.title, u"警告訊息"_s);
    QCOMPARE(seen.text, u"資料已轉入成功!!"_s);
    QCOMPARE(seen.buttons, QStringList{u"確定"_s});
    QCOMPARE(seen.icon, MsgIcon::None);
}

void PromptsTest::theTitleIsTheProgramsWhereNoneIsGiven() {
    PromptAnswers answers;
    answers.expectMsgBox();
    MsgBox(u"訊息"_s);
    QCOMPARE(answers.seen().constFirst().title, u"Pontrel"_s);
}

void PromptsTest::pictures_data() {
    QTest::addColumn<int>("icon");
    QTest::addRow("none") << static_cast<int>(MsgIcon::None);
    QTest::addRow("information") << static_cast<int>(MsgIcon::Information);
    QTest::addRow("question") << static_cast<int>(MsgIcon::Question);
    QTest::addRow("exclamation") << static_cast<int>(MsgIcon::Exclamation);
    QTest::addRow("critical") << static_cast<int>(MsgIcon::Critical);
}

void PromptsTest::pictures() {
    QFETCH(const int, icon);
    PromptAnswers answers;
    answers.expectMsgBox();
    MsgBox(u"訊息"_s, u"標題"_s, static_cast<MsgIcon>(icon));
    QCOMPARE(answers.seen().constFirst().icon, static_cast<MsgIcon>(icon));
}

void PromptsTest::aQuestionIsAnsweredByItsButtons() {
    PromptAnswers answers;
    answers.expectMsgBox(MsgAnswer::Yes).expectMsgBox(MsgAnswer::No);
    const auto ask = [] { return MsgBox(u"確定?"_s, u"確認刪除"_s, MsgIcon::Question, MsgButtons::YesNo); };
    QCOMPARE(ask(), MsgAnswer::Yes);
    QCOMPARE(ask(), MsgAnswer::No);
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(answers.seen().constFirst().buttons, QStringList({u"是"_s, u"否"_s}));
}

void PromptsTest::enterPressesTheDefaultButton() {
    const auto enter = [](QWidget& box) { QTest::keyClick(box.windowHandle(), Qt::Key_Return); };
    PromptAnswers answers;
    answers.expect(u"MsgBox"_s, enter).expect(u"MsgBox"_s, enter).expect(u"MsgBox"_s, enter);
    QCOMPARE(MsgBox(u"訊息"_s), MsgAnswer::Ok);
    const auto ask = [](MsgButtons buttons) {
        return MsgBox(u"確定?"_s, u"確認刪除"_s, MsgIcon::Question, buttons);
    };
    QCOMPARE(ask(MsgButtons::YesNo), MsgAnswer::Yes);
    QCOMPARE(ask(MsgButtons::YesNoDefaultNo), MsgAnswer::No);
    QCOMPARE(answers.trouble(), QString());
    for (int question : {1, 2})
        QCOMPARE(answers.seen().at(question).buttons, QStringList({u"是"_s, u"否"_s}));
}

void PromptsTest::escapeAnswersOkOrNo() {
    const auto escape = [](QWidget& box) { QTest::keyClick(&box, Qt::Key_Escape); };
    const auto closeBox = [](QWidget& box) { box.close(); };
    PromptAnswers answers;
    for (const PromptAnswers::Action& action :
         {PromptAnswers::Action(escape), PromptAnswers::Action(closeBox)}) {
        answers.expect(u"MsgBox"_s, action).expect(u"MsgBox"_s, action);
        QCOMPARE(MsgBox(u"訊息"_s), MsgAnswer::Ok);
        QCOMPARE(MsgBox(u"確定?"_s, u"標題"_s, MsgIcon::None, MsgButtons::YesNo), MsgAnswer::No);
    }
    QCOMPARE(answers.trouble(), QString());
}

void PromptsTest::aMessageIsPlainText() {
    PromptAnswers answers;
    answers.expectMsgBox().expectMsgBox();
    MsgBox(u"x"_s);
    MsgBox(u"<b>x</b><br><br><br><br><br>"_s);
    // As markup it would show one bold letter above five empty lines.
    QVERIFY(answers.seen().at(1).picture.width() > answers.seen().at(0).picture.width());
    QCOMPARE(answers.seen().at(1).picture.height(), answers.seen().at(0).picture.height());
}

void PromptsTest::aMessageBlocksTheWindowBeneath() {
    QPushButton beneath(u"按鈕"_s);
    int clicks = 0;
    connect(&beneath, &QPushButton::clicked, this, [&clicks] { ++clicks; });
    beneath.show();
    QVERIFY(QTest::qWaitForWindowActive(&beneath, PatienceMs));
    PromptAnswers answers;
    answers.expect(u"MsgBox"_s, [&beneath](QWidget& box) {
        click(beneath);
        QTest::keyClick(&box, Qt::Key_Return);
    });
    MsgBox(u"訊息"_s);
    QCOMPARE(clicks, 0);
    click(beneath);
    QCOMPARE(clicks, 1);
    QVERIFY(beneath.isActiveWindow());
}

void PromptsTest::aFileIsChosenByItsPath() {
    const TestStore store;
    const QString path = store.writePunchFile(u"20010305.txt"_s, "x");
    PromptAnswers answers;
    answers.expectFile(path);
    QCOMPARE(chooseFile(store.punchFolder(), u"Text (*.txt)"_s), std::optional(path));
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(answers.seen().constFirst().objectName, u"CommonDialog1"_s);
    answers.expectFile(u"20010305.txt"_s);
    QCOMPARE(chooseFile(store.punchFolder(), u"Text (*.txt)"_s), std::optional(path));
    QCOMPARE(answers.trouble(), QString());
}

void PromptsTest::aCancelledFileDialogGivesNothing() {
    const TestStore store;
    store.writePunchFile(u"20010305.txt"_s, "x");
    PromptAnswers answers;
    answers.expectFile({});
    QCOMPARE(chooseFile(store.punchFolder(), u"Text (*.txt)"_s), std::optional<QString>());
    QCOMPARE(answers.trouble(), QString());
}

void PromptsTest::aFileThatDoesNotExistIsNotTaken() {
    const TestStore store;
    PromptAnswers answers;
    answers.expect(u"CommonDialog1"_s, [](QWidget& dialog) {
        auto& name = control<QLineEdit>(dialog, u"fileNameEdit"_s);
        name.setText(u"20010305.txt"_s);
        QTest::keyClick(&name, Qt::Key_Return);
        QVERIFY(dialog.isVisible());
    });
    answers.expect({}, [](QWidget& complaint) { QTest::keyClick(&complaint, Qt::Key_Escape); });
    answers.expectFile({});
    QCOMPARE(chooseFile(store.punchFolder(), u"Text (*.txt)"_s), std::optional<QString>());
    QVERIFY2(answers.trouble().isEmpty(), qUtf8Printable(answers.trouble()));
}

void PromptsTest::theFileDialogKeepsToItsFilter() {
    const TestStore store;
    store.writePunchFile(u"20010305.txt"_s, "x");
    store.writePunchFile(u"20010305.bak"_s, "x");
    PromptAnswers answers;
    QStringList shown;
    answers.expect(u"CommonDialog1"_s, [&shown](QWidget& dialog) {
        const auto& list = control<QAbstractItemView>(dialog, u"listView"_s);
        QTRY_VERIFY_WITH_TIMEOUT(list.model()->rowCount(list.rootIndex()) > 0, PatienceMs);
        for (int row = 0; row < list.model()->rowCount(list.rootIndex()); ++row)
            shown << list.model()->index(row, 0, list.rootIndex()).data().toString();
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    QCOMPARE(chooseFile(store.punchFolder(), u"Text (*.txt)"_s), std::optional<QString>());
    QCOMPARE(shown, QStringList{u"20010305.txt"_s});
}

void PromptsTest::theNewestFileComesFirst() {
    const TestStore store;
    for (const auto* name : {"20001231.txt", "20010306.txt", "20010305.txt"})
        store.writePunchFile(QString::fromLatin1(name), "");
    // By the days in their names, whenever they were copied here; another one by its own time.
    QFile other(store.writePunchFile(u"others.txt"_s, ""));
    QVERIFY(other.open(QIODevice::ReadWrite));
    QVERIFY(other.setFileTime(QDateTime(QDate(2001, 3, 5), QTime(12, 0)), QFileDevice::FileModificationTime));
    other.close();
    QVERIFY(QDir(store.punchFolder()).mkdir(u"old"_s));
    PromptAnswers answers;
    answers.expect(u"CommonDialog1"_s, [](QWidget& dialog) {
        const auto& list = control<QAbstractItemView>(dialog, u"listView"_s);
        const auto shown = [&list] {
            QStringList names;
            for (int row = 0; row < list.model()->rowCount(list.rootIndex()); ++row)
                names << list.model()->index(row, 0, list.rootIndex()).data().toString();
            return names;
        };
        QTRY_COMPARE_WITH_TIMEOUT(
            shown(),
            QStringList({u"old"_s, u"20010306.txt"_s, u"others.txt"_s, u"20010305.txt"_s, u"20001231.txt"_s}),
            PatienceMs);
        auto& files = static_cast<QFileDialog&>(dialog);
        auto& entries = control<QAbstractItemView>(files, u"listView"_s);
        entries.setCurrentIndex(list.model()->index(1, 0, list.rootIndex()));
        QTest::keyClick(&entries, Qt::Key_Return);
    });
    QCOMPARE(chooseFile(store.punchFolder(), u"Text (*.txt)"_s),
             std::optional(QDir(store.punchFolder()).filePath(u"20010306.txt"_s)));
    QCOMPARE(answers.trouble(), QString());
}

void PromptsTest::theFileDialogOnlyChooses_data() {
    QTest::addColumn<QFileDialog::ViewMode>("view");
    QTest::addRow("names") << QFileDialog::List;
    QTest::addRow("details") << QFileDialog::Detail;
}

void PromptsTest::theFileDialogOnlyChooses() {
    QFETCH(const QFileDialog::ViewMode, view);
    const TestStore store;
    const QString name = u"20010305.txt"_s;
    const QString path = store.writePunchFile(name, "");
    QStringList offered;
    const auto offer = [&offered](bool there, const char* what) {
        if (there)
            offered << QLatin1String(what);
    };
    PromptAnswers answers;
    // Deleting asks first, renaming opens an editor: both would be seen.
    answers.expect(u"CommonDialog1"_s, [&](QWidget& dialog) {
        auto& files = static_cast<QFileDialog&>(dialog);
        files.setViewMode(view);
        auto& list =
            control<QAbstractItemView>(files, view == QFileDialog::List ? u"listView"_s : u"treeView"_s);
        QTRY_VERIFY_WITH_TIMEOUT(list.isVisible(), PatienceMs);
        QTRY_VERIFY_WITH_TIMEOUT(list.model()->rowCount(list.rootIndex()) == 1, PatienceMs);
        const QModelIndex file = list.model()->index(0, 0, list.rootIndex());
        QCOMPARE(file.data().toString(), name);
        list.setFocus();
        list.setCurrentIndex(file);
        offer(list.model()->setData(file, u"renamed.txt"_s), "rename by the model");
        QTest::keyClick(&list, Qt::Key_F2);
        offer(!list.findChildren<QLineEdit*>().isEmpty(), "F2");
        QTest::keyClick(&list, Qt::Key_Delete);
        const QPoint place = list.visualRect(file).center();
        QContextMenuEvent menu(QContextMenuEvent::Mouse, place, list.viewport()->mapToGlobal(place));
        // A menu opens in a loop of its own.
        QTimer::singleShot(0, &files, [&offer] {
            if (QWidget* popup = QApplication::activePopupWidget()) {
                offer(true, "menu");
                popup->close();
            }
        });
        QApplication::sendEvent(list.viewport(), &menu);
        QCoreApplication::processEvents();
        offer(list.dragEnabled() || list.acceptDrops(), "drag and drop");
        const auto buttons = files.findChildren<QAbstractButton*>();
        for (const QAbstractButton* button : buttons)
            offer(button->isVisible() && button->objectName() == u"newFolderButton"_s, "new folder");
        list.setCurrentIndex(file);
        files.reject();
    });
    (void)chooseFile(store.punchFolder(), u"Text (*.txt)"_s);
    QCOMPARE(offered, QStringList());
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(QDir(store.punchFolder()).entryList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot),
             QStringList{name});
    QVERIFY(QFile::exists(path));
}

void PromptsTest::theInputBoxGivesItsText() {
    PromptAnswers answers;
    answers.expect(u"InputBox"_s, [](QWidget& dialog) {
        QTest::keyClicks(&control<QLineEdit>(dialog, {}), u"90"_s);
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    answers.expect(u"InputBox"_s, [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    QCOMPARE(inputBox(u"請輸入年度"_s, u"年度"_s), std::optional(u"90"_s));
    QCOMPARE(inputBox(u"請輸入年度"_s, u"年度"_s), std::optional<QString>());
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(answers.seen().constFirst().title, u"年度"_s);
    QCOMPARE(answers.seen().constFirst().text, u"請輸入年度"_s);
}

void PromptsTest::thePointerIsAStateAndNotAStack() {
    QVERIFY(!hourglass());
    setHourglass(true);
    setHourglass(true);
    QVERIFY(hourglass());
    QVERIFY(QApplication::overrideCursor());
    QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    setHourglass(false);
    QVERIFY(!hourglass());
    QVERIFY(!QApplication::overrideCursor());
    setHourglass(false);
    QVERIFY(!QApplication::overrideCursor());
}

void PromptsTest::standardTextsAreInTraditionalChinese() {
    QCOMPARE(QLocale().name(), u"zh_TW"_s);
    QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), u"取消"_s);
    QCOMPARE(QFontInfo(QApplication::font()).family(), u"Noto Sans CJK TC"_s);
}

void PromptsTest::buttonsStandInOneOrderWithoutPictures() {
    PromptAnswers answers;
    answers.expect(u"MsgBox"_s, [](QWidget& box) {
        const auto buttons = box.findChildren<QPushButton*>();
        QCOMPARE(buttons.size(), 2);
        for (const QPushButton* button : buttons)
            QVERIFY(button->icon().isNull());
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    answers.expect(u"InputBox"_s, [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    MsgBox(u"確定?"_s, u"標題"_s, MsgIcon::Question, MsgButtons::YesNo);
    (void)inputBox(u"請輸入年度"_s, u"年度"_s);
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(answers.seen().at(0).buttons, QStringList({u"是"_s, u"否"_s}));
    QCOMPARE(answers.seen().at(1).buttons, QStringList({u"確定"_s, u"取消"_s}));
}

void PromptsTest::aRunTimeErrorIsToldWithNumberAndText() {
    setProcessEnd([](int status) { throw ProgramEnded{status}; });
    PromptAnswers answers;
    answers.expectMsgBox();
    QCOMPARE(endOf([] { guarded([] { throw RunTimeError(6, u"溢位"_s); }); }), std::optional(1));
    setProcessEnd({});
    QCOMPARE(answers.trouble(), QString());
    const SeenPrompt& seen = answers.seen().constFirst();
    QCOMPARE(seen.title, u"Pontrel"_s);
    QCOMPARE(seen.icon, MsgIcon::Critical);
    QCOMPARE(seen.text, u"執行階段錯誤 '6':\n\n溢位\n\n程式即將結束。"_s);
    QCOMPARE(seen.buttons, QStringList{u"確定"_s});
}

void PromptsTest::anErrorInsideTheMessageOfAnErrorEndsAtOnce() {
    setProcessEnd([](int status) { throw ProgramEnded{status}; });
    PromptAnswers answers;
    std::optional<int> inner;
    answers.expect(u"MsgBox"_s, [&inner](QWidget& box) {
        inner = endOf([] { endWithError(runTimeError(error::NoCurrentRecord)); });
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    QCOMPARE(endOf([] { endWithError(runTimeError(error::Overflow)); }), std::optional(1));
    setProcessEnd({});
    QCOMPARE(inner, std::optional(1));
    QCOMPARE(answers.seen().size(), 1);
    QCOMPARE(answers.trouble(), QString());
}

void PromptsTest::guardedPassesWhatIsNoRunTimeError() {
    setProcessEnd([](int status) { throw ProgramEnded{status}; });
    QCOMPARE(endOf([] { guarded([] { endProcess(0); }); }), std::optional(0));
    bool wentOn = false;
    QCOMPARE(endOf([&wentOn] { guarded([&wentOn] { wentOn = true; }); }), std::optional<int>());
    setProcessEnd({});
    QVERIFY(wentOn);
}

void PromptsTest::theEndLeavesThePointerAsItIs() {
    setProcessEnd([](int status) { throw ProgramEnded{status}; });
    PromptAnswers answers;
    bool hourglassOverMessage = false;
    answers.expect(u"MsgBox"_s, [&hourglassOverMessage](QWidget& box) {
        hourglassOverMessage = hourglass();
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    setHourglass(true);
    QCOMPARE(endOf([] { endWithError(runTimeError(error::Overflow)); }), std::optional(1));
    setProcessEnd({});
    setHourglass(false);
    QVERIFY(hourglassOverMessage);
}

void PromptsTest::theEndClosesAllConnections() {
    TestStore store;
    const auto other = store.connect();
    const auto accounts = [](Database& database) {
        return errorOf([&database] { return database.select(u"select Account from syst02"_s); });
    };
    QCOMPARE(accounts(store.database()), 0);
    QCOMPARE(accounts(*other), 0);
    setProcessEnd([](int status) { throw ProgramEnded{status}; });
    PromptAnswers answers;
    answers.expectMsgBox();
    QCOMPARE(endOf([] { endWithError(runTimeError(error::Overflow)); }), std::optional(1));
    setProcessEnd({});
    QCOMPARE(answers.trouble(), QString());
    QVERIFY(accounts(store.database()) != 0);
    QVERIFY(accounts(*other) != 0);
}

int main(int argc, char** argv) {
    return runTests<PromptsTest>(argc, argv);
}

#include "PromptsTest.moc"
