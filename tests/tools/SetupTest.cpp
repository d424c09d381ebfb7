#include "app/Habits.h"
#include "app/SingleInstance.h"
#include "app/Zoom.h"
#include "faults/SmallDisk.h"
#include "setup/FirstStart.h"
#include "store/StorePath.h"
#include "support/AppSupport.h"
#include "support/Dump.h"
#include "support/Patience.h"
#include "tools/Files.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QTemporaryDir>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

constexpr qint64 SmallDiskSize = 16 * 1024 * 1024;
constexpr qint64 BigDiskSize = 64 * 1024 * 1024;

/// Types into the box that has the focus, in place of what it holds, and goes on with Enter.
void enter(QWidget& dialog, const QString& text) {
    QTest::keyClick(dialog.focusWidget(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(dialog.focusWidget(), text);
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
}

void put(QWidget& dialog, const QString& box, const QString& text) {
    control<QLineEdit>(dialog, box).setText(text);
}

void press(QWidget& dialog, const QString& button) {
    click(control(dialog, button));
}

} // namespace

/// The set-up as a user sees it, over folders and a configuration of its own.
class SetupTest : public QObject {
    Q_OBJECT

  public:
    explicit SetupTest(QString trouble) : trouble_(std::move(trouble)) {}

  private:
    QString trouble_; ///< Why there can be no small disk.
    std::unique_ptr<QTemporaryDir> temporary_;
    MasterCopy from_;
    QString folder_;

    void bring(const QByteArray& version) {
        write(from_.templates + u"/B01.rpt"_s, "template " + version);
        write(from_.program, "#!/bin/sh\necho " + version + "\n");
    }
    /// The dialog filled in for that folder and confirmed.
    [[nodiscard]] static PromptAnswers::Action setUpIn(const QString& folder) {
        return [folder](QWidget& dialog) {
            put(dialog, u"TxtFolder"_s, folder);
            put(dialog, u"TxtAccount"_s, u"clerk"_s);
            put(dialog, u"TxtPassword"_s, u"It's mine"_s);
            put(dialog, u"TxtPassword2"_s, u"It's mine"_s);
            press(dialog, u"CmdOk"_s);
        };
    }
    /// Runs the set-up once, which succeeds.
    void setUpOnce() {
        PromptAnswers answers;
        answers.expect(u"SetupDialog"_s, setUpIn(folder_));
        QCOMPARE(folderToStart(from_), std::optional(folder_));
        QCOMPARE(answers.trouble(), QString());
    }
    /// The message that the set-up in that folder ends with, after which it is cancelled.
    [[nodiscard]] SeenPrompt refusedIn(const QString& folder) {
        PromptAnswers answers;
        answers.expect(u"SetupDialog"_s, setUpIn(folder)).expectMsgBox();
        answers.expectClick(u"SetupDialog"_s, u"CmdCancel"_s);
        const auto started = folderToStart(from_);
        if (started || !answers.trouble().isEmpty())
            qWarning("%s", qPrintable(started.value_or(QString()) + answers.trouble()));
        return answers.seen().size() == 3 ? answers.seen().at(1) : SeenPrompt();
    }

  private Q_SLOTS:
    void initTestCase() { QVERIFY2(trouble_.isEmpty(), qPrintable(trouble_)); }

    void init() {
        temporary_ = std::make_unique<QTemporaryDir>();
        QVERIFY(temporary_->isValid());
        qputenv("HOME", QFile::encodeName(temporary_->path()));
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(temporary_->filePath(u"config"_s)));
        from_ = {temporary_->filePath(u"usr/lib/pontrel"_s), temporary_->filePath(u"usr/share/report"_s)};
        folder_ = temporary_->filePath(u"my work/program"_s);
        bring("1");
        Habits::ofUser().leave();
    }

    void theDialogIsInOrder() {
        PromptAnswers answers;
        answers.expect(u"SetupDialog"_s, [this](QWidget& dialog) {
            QCOMPARE(dialog.windowTitle(), u"Pontrel 初次設定"_s);
            QCOMPARE(controlFaults(dialog), QStringList());
            QCOMPARE(tabFaults(dialog), QStringList());
            QCOMPARE(control<QLineEdit>(dialog, u"TxtFolder"_s).text(), temporary_->filePath(u"Pontrel"_s));
            QCOMPARE(control<QLineEdit>(dialog, u"TxtPassword"_s).echoMode(), QLineEdit::Password);
            QCOMPARE(control<QLineEdit>(dialog, u"TxtPassword2"_s).echoMode(), QLineEdit::Password);
            QVERIFY(control<QAbstractButton>(dialog, u"OptEmpty"_s).isChecked());
            QTest::keyClick(&dialog, Qt::Key_Escape);
        });
        QCOMPARE(folderToStart(from_), std::nullopt);
        QCOMPARE(answers.trouble(), QString());
        QVERIFY(!QFileInfo::exists(temporary_->filePath(u"Pontrel"_s)));
        QCOMPARE(rememberedFolder(), QString());
    }

    void keysAloneSetUpAnEmptyStore() {
        PromptAnswers answers;
        answers.expect(u"SetupDialog"_s, [this](QWidget& dialog) {
            enter(dialog, folder_);
            enter(dialog, u"clerk"_s);
            enter(dialog, u"It's mine"_s);
            enter(dialog, u"It's mine"_s);
            enter(dialog, u"O'Neil & Sons"_s);
            QCOMPARE(dialog.focusWidget()->objectName(), u"OptEmpty"_s);
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
            QCOMPARE(dialog.focusWidget()->objectName(), u"CboZoom"_s);
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
            QCOMPARE(dialog.focusWidget()->objectName(), u"CmdOk"_s);
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
        });
        QCOMPARE(folderToStart(from_), std::optional(folder_));
        QCOMPARE(answers.trouble(), QString());
        QCOMPARE(answers.seen().size(), 1);
        QCOMPARE(below(folder_),
                 (QStringList{u".laid-out"_s, u"DB"_s, u"pontrel"_s, u"punch"_s, u"report"_s}));
        QCOMPARE(contentOf(folder_ + u"/report/B01.rpt"_s), QByteArray("template 1"));
        QCOMPARE(rememberedFolder(), folder_);
        Database database(storePathIn(folder_));
        QCOMPARE(rowsOf(database, u"syst02"_s),
                 QStringList{u"clerk|It's mine|True|True|True|True|True|True|True|True"_s});
        QCOMPARE(rowsOf(database, u"Syst01"_s), QStringList{u"punch|5|10|60|60|01|02|03|04|O'Neil & Sons"_s});
        QCOMPARE(rowsOf(database, u"Base06"_s), QStringList());
    }

    void keysAloneSetUpTheExample() {
        PromptAnswers answers;
        answers.expect(u"SetupDialog"_s, [this](QWidget& dialog) {
            for (const QString& text : {folder_, u"demo"_s, u"demo"_s, u"demo"_s, QString()})
                enter(dialog, text);
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Down);
            QVERIFY(control<QAbstractButton>(dialog, u"OptDemo"_s).isChecked());
            for (int key = 0; key < 3; ++key) // to the zoom, to the button, which it then presses
                QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
        });
        QCOMPARE(folderToStart(from_), std::optional(folder_));
        QCOMPARE(answers.trouble(), QString());
        QCOMPARE(below(folder_ + u"/punch"_s).size(), 10);
        Database database(storePathIn(folder_));
        QCOMPARE(rowsOf(database, u"Base06"_s).size(), 42);
        // Its own name stays where none was entered.
        QCOMPARE(rowsOf(database, u"Syst01"_s),
                 QStringList{u"punch|5|10|60|60|01|02|03|04|範例實業股份有限公司"_s});
    }

    void proposesAZoomAndKeepsTheOneThatIsChosen() {
        const QString file = temporary_->filePath(u"habits.ini"_s);
        Habits::ofUser().keepIn(file);
        {
            PromptAnswers answers; // a cancel keeps nothing
            answers.expect(u"SetupDialog"_s, [](QWidget& dialog) {
                auto& list = control<QComboBox>(dialog, u"CboZoom"_s);
                QCOMPARE(list.currentData().toInt(), zoom::proposed(zoom::screenRoom()));
                QCOMPARE(list.itemData(list.count() - 1).toInt(), zoom::largestFitting(zoom::screenRoom()));
                list.setCurrentIndex(list.count() - 1);
                press(dialog, u"CmdCancel"_s);
            });
            QCOMPARE(folderToStart(from_), std::nullopt);
            QCOMPARE(answers.trouble(), QString());
            QVERIFY(!QFileInfo::exists(file));
        }
        PromptAnswers answers;
        answers.expect(u"SetupDialog"_s, [this](QWidget& dialog) {
            control<QComboBox>(dialog, u"CboZoom"_s).setCurrentIndex(0);
            setUpIn(folder_)(dialog);
        });
        QCOMPARE(folderToStart(from_), std::optional(folder_));
        QCOMPARE(answers.trouble(), QString());
        QCOMPARE(Habits::ofUser().value(u"zoom"_s), u"100"_s);
        Habits::ofUser().leave();
        Habits::ofUser().keepIn(file);
        QCOMPARE(Habits::ofUser().value(u"zoom"_s), u"100"_s);
    }

    void theNextStartAsksNothing() {
        setUpOnce();
        const QByteArray store = contentOf(storePathIn(folder_));
        PromptAnswers answers;
        QCOMPARE(folderToStart(from_), std::optional(folder_));
        QCOMPARE(answers.seen().size(), 0);
        QCOMPARE(contentOf(storePathIn(folder_)), store);
    }

    void saysWhatIsMissing_data() {
        QTest::addColumn<QString>("box");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("message");
        QTest::newRow("no folder") << u"TxtFolder"_s << u" "_s << u"請輸入程式資料夾！"_s;
        QTest::newRow("a relative folder") << u"TxtFolder"_s << u"a/b"_s << u"程式資料夾請輸入完整路徑！"_s;
        QTest::newRow("no account") << u"TxtAccount"_s << QString() << u"請輸入使用者名稱！"_s;
        QTest::newRow("no password") << u"TxtPassword"_s << QString() << u"請輸入密碼！"_s;
        QTest::newRow("another password")
            << u"TxtPassword2"_s << u"it's mine"_s << u"兩次輸入的密碼不同，請重新輸入！"_s;
    }

    void saysWhatIsMissing() {
        QFETCH(const QString, box);
        QFETCH(const QString, text);
        QFETCH(const QString, message);
        PromptAnswers answers;
        answers.expect(u"SetupDialog"_s, [&](QWidget& dialog) {
            put(dialog, u"TxtFolder"_s, folder_);
            put(dialog, u"TxtPassword"_s, u"It's mine"_s);
            put(dialog, u"TxtPassword2"_s, u"It's mine"_s);
            put(dialog, box, text);
            press(dialog, u"CmdOk"_s);
        });
        answers.expectMsgBox();
        answers.expect(u"SetupDialog"_s, [&](QWidget& dialog) {
            QCOMPARE(dialog.focusWidget()->objectName(), box);
            press(dialog, u"CmdCancel"_s);
        });
        QCOMPARE(folderToStart(from_), std::nullopt);
        QCOMPARE(answers.trouble(), QString());
        QCOMPARE(answers.seen().at(1).text, message);
        QCOMPARE(answers.seen().at(1).icon, MsgIcon::Exclamation);
        QCOMPARE(stateOf(folder_), FolderState::Missing);
    }

    void refusesAFolderOfSomebodyElse() {
        write(folder_ + u"/letter.txt"_s, "Dear all");
        QCOMPARE(refusedIn(folder_).text, u"資料夾「%1」不是空的，請另選資料夾。"_s.arg(folder_));
        QCOMPARE(below(folder_), QStringList{u"letter.txt"_s});
        const QString file = folder_ + u"/letter.txt"_s;
        QCOMPARE(refusedIn(file).text, u"「%1」不是資料夾，請另選資料夾。"_s.arg(file));
        QCOMPARE(refusedIn(file + u"/sub"_s).text, u"無法建立資料夾「%1/sub」。"_s.arg(file));
        QCOMPARE(contentOf(file), QByteArray("Dear all"));
        QCOMPARE(rememberedFolder(), QString());
    }

    void aKilledSetUpIsRepeated() {
        (void)layOut(from_, folder_);
        write(folder_ + u"/report/.B01.rpt.new"_s, "tem");
        write(folder_ + u"/DB/.new-aB3xYz/Pontrel.mdb"_s, "half a store");
        write(folder_ + u"/DB/.making"_s, {});
        setUpOnce();
        QCOMPARE(below(folder_ + u"/DB"_s), QStringList{u"Pontrel.mdb"_s});
        QCOMPARE(below(folder_ + u"/report"_s), QStringList{u"B01.rpt"_s});
    }

    void offersToUseAStoreThatIsThere() {
        setUpOnce();
        QVERIFY(QFile::remove(temporary_->filePath(u"config/pontrel/folder"_s)));
        QVERIFY(QFile::remove(folder_ + u"/pontrel"_s));
        const QByteArray store = contentOf(storePathIn(folder_));
        const auto chooseFolder = [this](QWidget& dialog) {
            put(dialog, u"TxtFolder"_s, folder_); // no account: there is one
            press(dialog, u"CmdOk"_s);
        };
        PromptAnswers answers;
        answers.expect(u"SetupDialog"_s, chooseFolder).expectMsgBox(MsgAnswer::No);
        answers.expect(u"SetupDialog"_s, chooseFolder).expectMsgBox(MsgAnswer::Yes);
        QCOMPARE(folderToStart(from_), std::optional(folder_));
        QCOMPARE(answers.trouble(), QString());
        QCOMPARE(
            answers.seen().at(1).text,
            u"資料夾「%1」已有資料庫。要使用這個資料庫嗎？\n其中的使用者、密碼及公司機關名稱都維持原樣。"_s
                .arg(folder_));
        QCOMPARE(contentOf(storePathIn(folder_)), store);
        QVERIFY(QFileInfo(folder_ + u"/pontrel"_s).isExecutable());
        QCOMPARE(rememberedFolder(), folder_);
    }

    void aFolderWhoseProgramRunsIsLeftAlone() {
        setUpOnce();
        const SingleInstance running(folder_);
        QVERIFY(running.isFirst());
        bring("2");
        {
            PromptAnswers answers; // the program itself will say that it runs
            QCOMPARE(folderToStart(from_), std::optional(folder_));
            QCOMPARE(answers.seen().size(), 0);
        }
        QVERIFY(contentOf(folder_ + u"/pontrel"_s).contains("echo 1"));

        QVERIFY(QFile::remove(temporary_->filePath(u"config/pontrel/folder"_s)));
        PromptAnswers answers;
        answers.expect(u"SetupDialog"_s, setUpIn(folder_)).expectMsgBox(MsgAnswer::Yes).expectMsgBox();
        answers.expectClick(u"SetupDialog"_s, u"CmdCancel"_s);
        QCOMPARE(folderToStart(from_), std::nullopt);
        QCOMPARE(answers.trouble(), QString());
        QCOMPARE(answers.seen().at(2).text, u"資料夾「%1」的程式正在執行，請先結束該程式。"_s.arg(folder_));
        QCOMPARE(rememberedFolder(), QString());
    }

    void asksAnewWhereTheFolderHasGone() {
        setUpOnce();
        QVERIFY(QDir(folder_).removeRecursively());
        PromptAnswers answers;
        answers.expectMsgBox().expect(u"SetupDialog"_s, [this](QWidget& dialog) {
            QCOMPARE(control<QLineEdit>(dialog, u"TxtFolder"_s).text(), folder_);
            press(dialog, u"CmdCancel"_s);
        });
        QCOMPARE(folderToStart(from_), std::nullopt);
        QCOMPARE(answers.trouble(), QString());
        QVERIFY(answers.seen().at(0).text.startsWith(u"找不到程式資料夾「%1」中的資料庫。"_s.arg(folder_)));
        QCOMPARE(rememberedFolder(), folder_); // it may come back
    }

    void tellsOnceWhichTemplatesItHasKept() {
        setUpOnce();
        write(folder_ + u"/report/B01.rpt"_s, "mine");
        bring("2");
        PromptAnswers answers;
        answers.expectMsgBox();
        QCOMPARE(folderToStart(from_), std::optional(folder_));
        QCOMPARE(answers.trouble(), QString());
        QVERIFY(answers.seen().at(0).text.endsWith(u"：\n\nreport/B01.rpt"_s));
        QCOMPARE(contentOf(folder_ + u"/report/B01.rpt"_s), QByteArray("mine"));
        QCOMPARE(contentOf(folder_ + u"/report/B01.rpt.new"_s), QByteArray("template 2"));
        QVERIFY(contentOf(folder_ + u"/pontrel"_s).contains("echo 2"));
        QCOMPARE(folderToStart(from_), std::optional(folder_));
        QCOMPARE(answers.seen().size(), 1);
    }

    void namesTenOfTheTemplatesThatItHasKept_data() {
        QTest::addColumn<int>("kept");
        QTest::addColumn<QString>("rest");
        QTest::newRow("ten") << 10 << QString();
        QTest::newRow("all") << 38 << u"\n等 38 個檔案"_s;
    }

    void namesTenOfTheTemplatesThatItHasKept() {
        QFETCH(const int, kept);
        QFETCH(const QString, rest);
        const auto nameOf = [](int number) { return u"report/B%1.rpt"_s.arg(number, 2, 10, QChar(u'0')); };
        const auto bringAll = [&](const QByteArray& version) {
            for (int number = 1; number <= kept; ++number)
                write(QFileInfo(from_.templates).path() + u'/' + nameOf(number), version);
        };
        bringAll("template 1");
        setUpOnce();
        QStringList names;
        for (int number = 1; number <= kept; ++number) {
            write(folder_ + u'/' + nameOf(number), "mine");
            if (number <= 10)
                names += nameOf(number);
        }
        bringAll("template 2");
        PromptAnswers answers;
        answers.expectMsgBox();
        QCOMPARE(folderToStart(from_), std::optional(folder_));
        QCOMPARE(answers.trouble(), QString());
        QCOMPARE(answers.seen().at(0).text.section(u"\n\n"_s, 1), names.join(u'\n') + rest);
        QVERIFY(answers.seen().at(0).picture.height() < 480);
    }

    void tellsWhichTemplatesItHasKeptWhereTheStoreHasGone() {
        setUpOnce();
        write(folder_ + u"/report/B01.rpt"_s, "mine");
        QVERIFY(QFile::remove(storePathIn(folder_)));
        bring("2");
        const QString journal = storePathIn(folder_) + u"-journal"_s;
        write(journal, "of another store");
        PromptAnswers answers;
        // The first try lays out and makes no store, the second one has nothing to tell any more.
        answers.expectMsgBox().expect(u"SetupDialog"_s, setUpIn(folder_)).expectMsgBox().expectMsgBox();
        answers.expect(u"SetupDialog"_s, [&](QWidget& dialog) {
            QVERIFY(QFile::remove(journal));
            setUpIn(folder_)(dialog);
        });
        QCOMPARE(folderToStart(from_), std::optional(folder_));
        QCOMPARE(answers.trouble(), QString());
        QVERIFY(answers.seen().at(2).text.endsWith(u"：\n\nreport/B01.rpt"_s));
        QVERIFY(answers.seen().at(3).text.contains(journal));
        QCOMPARE(contentOf(folder_ + u"/report/B01.rpt"_s), QByteArray("mine"));
        QCOMPARE(contentOf(folder_ + u"/report/B01.rpt.new"_s), QByteArray("template 2"));
        QCOMPARE(stateOf(folder_), FolderState::HasStore);
    }

    void tellsWhyAStoreCannotBeMade() {
        (void)layOut(from_, folder_); // a set-up that was killed has come so far
        const QString journal = storePathIn(folder_) + u"-journal"_s;
        write(journal, "of another store");
        QCOMPARE(refusedIn(folder_).text,
                 u"「%1」屬於一個已不存在的資料庫。請將該資料庫放回原處，或將此檔案移走。"_s.arg(journal));
        QCOMPARE(below(folder_ + u"/DB"_s), QStringList{u"Pontrel.mdb-journal"_s});
        QVERIFY(QFile::remove(journal));

        // A link that leads nowhere in the place of a punch file: it can neither be kept nor written.
        const QString punches = folder_ + u"/punch/20100301.txt"_s;
        QVERIFY(QFile::link(u"/nonexistent/file.txt"_s, punches));
        PromptAnswers answers;
        answers.expect(u"SetupDialog"_s, [this](QWidget& dialog) {
            control<QAbstractButton>(dialog, u"OptDemo"_s).setChecked(true);
            setUpIn(folder_)(dialog);
        });
        answers.expectMsgBox().expectClick(u"SetupDialog"_s, u"CmdCancel"_s);
        QCOMPARE(folderToStart(from_), std::nullopt);
        QCOMPARE(answers.trouble(), QString());
        const QString told = answers.seen().at(1).text;
        QVERIFY2(told.startsWith(u"無法建立資料庫："_s) && told.contains(punches), qUtf8Printable(told));
        QCOMPARE(below(folder_ + u"/DB"_s), QStringList());
        QVERIFY(QFileInfo(punches).isSymLink());
        QCOMPARE(rememberedFolder(), QString());
    }

    void tellsOfADiskThatIsTooSmall() {
        const SmallDisk disk(SmallDiskSize);
        const QString text = refusedIn(disk.folder() + u"/a/program"_s).text;
        QVERIFY2(text.startsWith(u"磁碟空間不足，還需要 "_s), qUtf8Printable(text));
        QCOMPARE(below(disk.folder()), QStringList());
    }

    void tellsOfADiskThatIsReadOnly() {
        SmallDisk disk(BigDiskSize);
        QVERIFY(QDir(disk.folder()).mkdir(u"program"_s));
        disk.setReadOnly(true);
        const QString below1 = disk.folder() + u"/program"_s;
        QCOMPARE(refusedIn(below1).text, u"無法建立資料夾「%1/report」。"_s.arg(below1));
        QCOMPARE(below(below1), QStringList());
        disk.setReadOnly(false);
        folder_ = below1;
        setUpOnce();
        QCOMPARE(stateOf(folder_), FolderState::HasStore);
        QVERIFY(QDir(folder_).removeRecursively());
    }

    void startsTheOldVersionWhereADiskIsFull() {
        SmallDisk disk(BigDiskSize);
        folder_ = disk.folder() + u"/program"_s;
        setUpOnce();
        const QByteArray store = contentOf(storePathIn(folder_));
        bring("2");
        write(from_.program, "#!/bin/sh\necho 2\n" + QByteArray(8 * 1024 * 1024, '#'));
        disk.fillUpTo(1024 * 1024);
        PromptAnswers answers;
        answers.expectMsgBox();
        QCOMPARE(folderToStart(from_), std::optional(folder_));
        QCOMPARE(answers.trouble(), QString());
        QCOMPARE(answers.seen().at(0).text,
                 u"程式未能更新，仍以原有的版本啟動。\n磁碟已滿，無法寫入「%1/pontrel」。"_s.arg(folder_));
        QCOMPARE(contentOf(folder_ + u"/pontrel"_s), QByteArray("#!/bin/sh\necho 1\n"));
        QCOMPARE(contentOf(storePathIn(folder_)), store);
        disk.freeSpace();
        QCOMPARE(folderToStart(from_), std::optional(folder_));
        QCOMPARE(answers.seen().size(), 1);
        QVERIFY(contentOf(folder_ + u"/pontrel"_s).startsWith("#!/bin/sh\necho 2\n"));
    }

    void startsAllTheSameWhereItCannotRemember() {
        write(temporary_->filePath(u"config"_s), "a file");
        PromptAnswers answers;
        answers.expect(u"SetupDialog"_s, setUpIn(folder_)).expectMsgBox();
        QCOMPARE(folderToStart(from_), std::optional(folder_));
        QCOMPARE(answers.trouble(), QString());
        QCOMPARE(answers.seen().at(1).text, u"無法記住程式資料夾，下次啟動時會再詢問一次。"_s);
        QCOMPARE(stateOf(folder_), FolderState::HasStore);
    }

    void browsesForAFolder() {
        PromptAnswers answers;
        answers.expectClick(u"SetupDialog"_s, u"CmdBrow"_s);
        answers.expect(u"FrmBrower"_s, [this](QWidget& dialog) {
            put(dialog, u"FolderPath"_s, folder_);
            press(dialog, u"CmdOk"_s);
        });
        answers.expectClick(u"SetupDialog"_s, u"CmdBrow"_s);
        answers.expectClick(u"FrmBrower"_s, u"CmdCancel"_s);
        answers.expect(u"SetupDialog"_s, [this](QWidget& dialog) {
            QCOMPARE(control<QLineEdit>(dialog, u"TxtFolder"_s).text(), folder_);
            press(dialog, u"CmdCancel"_s);
        });
        QCOMPARE(folderToStart(from_), std::nullopt);
        QCOMPARE(answers.trouble(), QString());
    }
};

int main(int argc, char** argv) {
    const QString trouble = enterOwnMounts();
    PontrelApplication application(argv);
    SetupTest test(trouble);
    return QTest::qExec(&test, argc, argv);
}
#include "SetupTest.moc"
