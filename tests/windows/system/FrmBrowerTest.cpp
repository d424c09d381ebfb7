#include "windows/system/FrmBrower.h"

#include "app/RecordChildFixture.h"
#include "rules/Session.h"
#include "support/Patience.h"
#include "support/SavedFiles.h"

#include <QDir>
#include <QFileSystemModel>
#include <QTemporaryDir>
#include <QTreeView>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// Opens the tree down to the folder and clicks it as a mouse does.
void chooseInTree(QWidget& dialog, const QString& folder) {
    auto& tree = control<QTreeView>(dialog, u"FolderView1"_s);
    const auto* folders = static_cast<const QFileSystemModel*>(tree.model());
    const QModelIndex chosen = folders->index(folder);
    QVERIFY(chosen.isValid());
    tree.scrollTo(chosen);
    QTRY_VERIFY_WITH_TIMEOUT(tree.viewport()->rect().contains(tree.visualRect(chosen).center()), PatienceMs);
    QTest::mouseClick(tree.viewport(), Qt::LeftButton, Qt::NoModifier, tree.visualRect(chosen).center());
}

/// A folder with two folders and a file, made anew.
class Folders {
  public:
    Folders() {
        QDir(dir_.path()).mkdir(u"first"_s);
        QDir(dir_.path()).mkdir(u"打卡"_s);
        writeContent(path(u"20010305.txt"_s), {});
    }
    [[nodiscard]] QString path(const QString& name = {}) const { return dir_.filePath(name); }

  private:
    QTemporaryDir dir_;
};

} // namespace

class FrmBrowerTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void cleanup() { gHandPath.clear(); }
    void captionsAreToTheCharacter();
    void aFolderChosenInTheTreeStandsInTheBoxAndIsTaken();
    void theTreeShowsFoldersAlone();
    void aTypedPathIsTaken();
    void nothingChosenIsTakenAsItIs();
    void cancelLeavesThePath_data();
    void cancelLeavesThePath();
    void theKeyboardAloneChoosesAFolder();
    void enterInTheBoxMovesOn();
};

void FrmBrowerTest::captionsAreToTheCharacter() {
    const FrmBrower dialog(nullptr);
    QCOMPARE(dialog.objectName(), u"FrmBrower"_s);
    QCOMPARE(dialog.windowTitle(), u"瀏覽資料夾"_s);
    QCOMPARE(control<QLabel>(dialog, u"Label1"_s).text(), u"請選取欲使用之路徑："_s);
    QCOMPARE(control<QPushButton>(dialog, u"CmdOk"_s).text(), u"確定"_s);
    QCOMPARE(control<QPushButton>(dialog, u"CmdCancel"_s).text(), u"取消"_s);
    QCOMPARE(control<QLineEdit>(dialog, u"FolderPath"_s).text(), QString());
}

void FrmBrowerTest::aFolderChosenInTheTreeStandsInTheBoxAndIsTaken() {
    const Folders folders;
    PromptAnswers answers;
    answers.expect(u"FrmBrower"_s, [&folders](QWidget& dialog) {
        const auto& path = control<QLineEdit>(dialog, u"FolderPath"_s);
        chooseInTree(dialog, folders.path(u"first"_s));
        QCOMPARE(path.text(), folders.path(u"first"_s));
        chooseInTree(dialog, folders.path(u"打卡"_s));
        QCOMPARE(path.text(), folders.path(u"打卡"_s));
        QCOMPARE(gHandPath, QString());
        click(control(dialog, u"CmdOk"_s));
    });
    FrmBrower::ask(nullptr);
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(gHandPath, folders.path(u"打卡"_s));
}

void FrmBrowerTest::theTreeShowsFoldersAlone() {
    const Folders folders;
    FrmBrower dialog(nullptr);
    const auto& tree = control<QTreeView>(dialog, u"FolderView1"_s);
    auto* model = static_cast<QFileSystemModel*>(tree.model());
    const QModelIndex parent = model->index(folders.path());
    model->fetchMore(parent);
    QTRY_COMPARE_WITH_TIMEOUT(model->rowCount(parent), 2, PatienceMs);
    QCOMPARE(model->rowCount(model->index(folders.path(u"first"_s))), 0);
    for (int column = 1; column < model->columnCount(); ++column)
        QVERIFY(tree.isColumnHidden(column));
}

void FrmBrowerTest::aTypedPathIsTaken() {
    PromptAnswers answers;
    answers.expect(u"FrmBrower"_s, [](QWidget& dialog) {
        QTest::keyClicks(&control(dialog, u"FolderPath"_s), u"/no/such/folder"_s);
        click(control(dialog, u"CmdOk"_s));
    });
    FrmBrower::ask(nullptr);
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(gHandPath, u"/no/such/folder"_s);
}

void FrmBrowerTest::nothingChosenIsTakenAsItIs() {
    gHandPath = u"/before"_s;
    PromptAnswers answers;
    answers.expectClick(u"FrmBrower"_s, u"CmdOk"_s);
    FrmBrower::ask(nullptr);
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(gHandPath, QString());
}

void FrmBrowerTest::cancelLeavesThePath_data() {
    QTest::addColumn<QString>("way");
    for (const char* way : {"button", "escape", "close box"})
        QTest::addRow("%s", way) << QString::fromLatin1(way);
}

void FrmBrowerTest::cancelLeavesThePath() {
    QFETCH(const QString, way);
    gHandPath = u"/before"_s;
    PromptAnswers answers;
    answers.expect(u"FrmBrower"_s, [&way](QWidget& dialog) {
        QTest::keyClicks(&control(dialog, u"FolderPath"_s), u"/other"_s);
        if (way == u"button"_s)
            click(control(dialog, u"CmdCancel"_s));
        else if (way == u"escape"_s)
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
        else
            dialog.close();
    });
    FrmBrower::ask(nullptr);
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(gHandPath, u"/before"_s);
}

void FrmBrowerTest::theKeyboardAloneChoosesAFolder() {
    PromptAnswers answers;
    answers.expect(u"FrmBrower"_s, [](QWidget& dialog) {
        auto& tree = control<QTreeView>(dialog, u"FolderView1"_s);
        QTRY_VERIFY_WITH_TIMEOUT(tree.hasFocus(), PatienceMs);
        QTRY_VERIFY_WITH_TIMEOUT(tree.model()->rowCount(tree.model()->index(0, 0)) > 0, PatienceMs);
        QTest::keyClick(&tree, Qt::Key_Down);
        const QString chosen = control<QLineEdit>(dialog, u"FolderPath"_s).text();
        QVERIFY2(QDir(chosen).exists() && chosen.size() > 1, qUtf8Printable(chosen));
        QTest::keyClick(&tree, Qt::Key_Up);
        QCOMPARE(control<QLineEdit>(dialog, u"FolderPath"_s).text(), u"/"_s);
        QTest::keyClick(&tree, Qt::Key_Tab);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    });
    FrmBrower::ask(nullptr);
    QCOMPARE(answers.trouble(), QString());
    QCOMPARE(gHandPath, u"/"_s);
}

void FrmBrowerTest::enterInTheBoxMovesOn() {
    FrmBrower dialog(nullptr);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog, PatienceMs));
    control(dialog, u"FolderPath"_s).setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QVERIFY(control(dialog, u"CmdOk"_s).hasFocus());
    QVERIFY(dialog.isVisible());
}

int main(int argc, char** argv) {
    return runTests<FrmBrowerTest>(argc, argv);
}

#include "FrmBrowerTest.moc"
