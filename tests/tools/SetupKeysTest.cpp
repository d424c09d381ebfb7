#include "app/Habits.h"
#include "setup/FirstStart.h"
#include "support/AppSupport.h"
#include "support/Patience.h"

#include <QComboBox>
#include <QDialog>
#include <QTemporaryDir>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

/// The keys for the zoom while the set-up stands, whose own list chooses it.
class SetupKeysTest : public QObject {
    Q_OBJECT

  private:
    QTemporaryDir temporary_;

    static void pressAll(QWidget& dialog) {
        for (const Qt::Key key : {Qt::Key_Plus, Qt::Key_Minus, Qt::Key_0})
            QTest::keyClick(dialog.windowHandle(), key, Qt::ControlModifier);
        QVERIFY(!dialog.findChild<QWidget*>(u"Notice"_s));
        QCOMPARE(Habits::ofUser().value(u"zoom"_s), QString());
    }

  private Q_SLOTS:
    void initTestCase() {
        QVERIFY(temporary_.isValid());
        qputenv("HOME", QFile::encodeName(temporary_.path()));
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(temporary_.filePath(u"config"_s)));
        Habits::ofUser().leave();
    }

    void theyChooseNoZoom() {
        QVERIFY(rememberFolder(temporary_.filePath(u"gone"_s)));
        PromptAnswers answers;
        answers.expect(u"MsgBox"_s, [](QWidget& box) {
            pressAll(box);
            box.close();
        });
        answers.expect(u"SetupDialog"_s, [](QWidget& dialog) {
            const auto& list = control<QComboBox>(dialog, u"CboZoom"_s);
            const QString offered = list.currentText();
            pressAll(dialog);
            QCOMPARE(list.currentText(), offered);
            click(control(dialog, u"CmdCancel"_s));
        });
        QCOMPARE(folderToStart({}), std::nullopt);
        QCOMPARE(answers.trouble(), QString());
    }

    void theyChooseItAgainAfterwards() {
        QDialog dialog;
        dialog.show();
        QVERIFY(QTest::qWaitForWindowExposed(&dialog, PatienceMs));
        QTest::keyClick(dialog.windowHandle(), Qt::Key_0, Qt::ControlModifier);
        QVERIFY(dialog.findChild<QWidget*>(u"Notice"_s));
        QCOMPARE(Habits::ofUser().value(u"zoom"_s), u"100"_s);
    }
};

int main(int argc, char** argv) {
    return runTests<SetupKeysTest>(argc, argv);
}

#include "SetupKeysTest.moc"
