#include "windows/attendance/Form3Fixture.h"

#include <QTemporaryFile>

#include <cstdio>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

/// Takes what the process writes to its error output while it stands.
class ErrorOutput {
  public:
    ErrorOutput() {
        if (!file_.open())
            qFatal("no temporary file");
        std::fflush(stderr);
        before_ = dup(STDERR_FILENO);
        dup2(file_.handle(), STDERR_FILENO);
    }
    ~ErrorOutput() { giveBack(); }
    ErrorOutput(const ErrorOutput&) = delete;
    ErrorOutput& operator=(const ErrorOutput&) = delete;

    /// The lines of the program among it, behind the end of its taking.
    [[nodiscard]] QStringList lines() {
        giveBack();
        file_.seek(0);
        return QString::fromUtf8(file_.readAll()).split(u'\n').filter(u"pontrel: "_s);
    }

  private:
    void giveBack() {
        if (before_ < 0)
            return;
        std::fflush(stderr);
        dup2(before_, STDERR_FILENO);
        close(before_);
        before_ = -1;
    }

    QTemporaryFile file_;
    int before_ = -1;
};

const QByteArray FirstLine = "0000000100012001030508000000007001\n";

} // namespace

/// An action that ends early tells the user nothing, and whoever looks at the error output its cause.
class Form3SilentEndTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void cleanup() { setHourglass(false); }
    void anImportThatEndsEarlyTellsItsCauseOnTheErrorOutput();
    void aRecalculationThatEndsEarlyDoesSoToo();
    void oneThatComesToItsEndOrIsCancelledSaysNothing();
};

void Form3SilentEndTest::anImportThatEndsEarlyTellsItsCauseOnTheErrorOutput() {
    Form3Fixture fixture;
    const QString file =
        fixture.store.writePunchFile(u"20010305.txt"_s, FirstLine + "0000000100012001139908000000007001\n");
    fixture.open();
    fixture.answers.expectFile(file);
    ErrorOutput output;
    fixture.press(u"CtrlCmd0(0)"_s);
    const QStringList lines = output.lines();
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.seen(), QStringList{u"CommonDialog1"_s}); // no message
    QVERIFY(hourglass());
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines.constFirst().startsWith(u"pontrel: 3075: 敘述的語法錯誤"_s),
             qPrintable(lines.constFirst()));
    QVERIFY2(lines.constFirst().contains(u"2001/13/99"_s), qPrintable(lines.constFirst()));
}

void Form3SilentEndTest::aRecalculationThatEndsEarlyDoesSoToo() {
    Form3Fixture fixture;
    addSlot(fixture.database(), u"A"_s, {{u"CardType", Value()}});
    fixture.open();
    fixture.clickTab(2);
    fixture.expectDate(u"900305"_s);
    ErrorOutput output;
    fixture.press(u"CmdCtrl(5)"_s);
    const QStringList lines = output.lines();
    QCOMPARE(fixture.seen(), QStringList{u"FrmI1Date"_s});
    QCOMPARE(lines.size(), 1);
    QVERIFY2(lines.constFirst().startsWith(u"pontrel: 94: Null 的使用無效"_s),
             qPrintable(lines.constFirst()));
}

void Form3SilentEndTest::oneThatComesToItsEndOrIsCancelledSaysNothing() {
    Form3Fixture fixture;
    const QString file = fixture.store.writePunchFile(u"20010305.txt"_s, FirstLine);
    fixture.open();
    ErrorOutput output;
    fixture.answers.expectFile(QString());
    fixture.press(u"CtrlCmd0(0)"_s);
    fixture.answers.expectFile(file).expectMsgBox();
    fixture.press(u"CtrlCmd0(0)"_s);
    fixture.clickTab(2);
    fixture.answers.expectClick(u"FrmI1Date"_s, u"Command1(1)"_s);
    fixture.press(u"CmdCtrl(5)"_s);
    QCOMPARE(output.lines(), QStringList());
    QCOMPARE(fixture.answers.trouble(), QString());
}

int main(int argc, char** argv) {
    return runTests<Form3SilentEndTest>(argc, argv);
}

#include "Form3SilentEndTest.moc"
