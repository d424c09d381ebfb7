#include "store/DataSource.h"
#include "windows/schedule/Form2Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// The texts that a label has shown while it was watched, each once and the empty one left out, and whether
/// the pointer was an hourglass each time.
class LabelWatch : public QObject {
  public:
    explicit LabelWatch(QLabel& label) : label_(label) { label.installEventFilter(this); }

    QStringList texts;
    bool alwaysHourglass = true;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && !label_.text().isEmpty()) {
            if (!texts.contains(label_.text()))
                texts += label_.text();
            alwaysHourglass &= hourglass();
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    QLabel& label_;
};

} // namespace

/// What the roster window shows while one of its long actions runs.
class Form2RunTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void generationLeavesTheCounterAlone();
    void generationShowsHowFarItIsUnderTheHourglass();
    void theQueryRunsUnderTheHourglass();
    void aQueryThatFailsTellsUnderTheHourglass();
};

void Form2RunTest::generationLeavesTheCounterAlone() {
    Form2Fixture fixture;
    fixture.addPeople();
    addRoster(fixture.database(), u"10001"_s, {2001, 2, 1}, u"A"_s);
    fixture.open(1);
    fixture.typeDate(0, u"900301"_s);
    fixture.typeDate(1, u"900305"_s);
    auto& counter = fixture.at<QLabel>(u"StbTool(1)"_s);
    QCOMPARE(counter.text(), u"資料錄:1/1"_s);
    const LabelWatch watch(counter);
    QString overTheMessage;
    fixture.answers.expect(u"MsgBox"_s, [&](QWidget& box) {
        overTheMessage = counter.text();
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    fixture.press(u"CmdCal"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(overTheMessage, u"資料錄:1/1"_s);
    QCOMPARE(counter.text(), u"資料錄:1/9"_s);
    for (const QString& text : watch.texts)
        QVERIFY2(text.startsWith(u"資料錄:"), qUtf8Printable(text));
}

void Form2RunTest::generationShowsHowFarItIsUnderTheHourglass() {
    Form2Fixture fixture;
    fixture.addPeople();
    fixture.open(1);
    fixture.typeDate(0, u"900228"_s);
    fixture.typeDate(1, u"900228"_s);
    auto& sign = fixture.at<QLabel>(u"DoneUpTo"_s);
    QCOMPARE(sign.text(), QString());
    const LabelWatch watch(sign);
    QString overTheMessage;
    fixture.answers.expect(u"MsgBox"_s, [&](QWidget& box) {
        overTheMessage = sign.text();
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    fixture.press(u"CmdCal"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    // One day of work, the second of the rotation, and its rest.
    QCOMPARE(watch.texts, QStringList({u"排至2001/2/28"_s, u"排至2001/3/1"_s, u"排至2001/3/2"_s}));
    QVERIFY(watch.alwaysHourglass);
    QCOMPARE(overTheMessage, QString());
    QCOMPARE(sign.text(), QString());
}

void Form2RunTest::theQueryRunsUnderTheHourglass() {
    Form2Fixture fixture;
    fixture.addPeople();
    for (int day = 1; day <= 3; ++day)
        addRoster(fixture.database(), u"10001"_s, {2001, 3, day}, u"A"_s);
    fixture.open(1);
    fixture.typeDate(2, u"900302"_s);
    fixture.typeDate(3, u"900303"_s);
    QList<bool> pointers;
    QObject::connect(&fixture.at<DataSource>(u"Data1"_s), &DataSource::Reposition, &fixture.form(),
                     [&] { pointers += hourglass(); });
    QVERIFY(!hourglass());
    fixture.press(u"CmdQuery"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    // Run, then moved to the last row and the first.
    QCOMPARE(pointers, QList<bool>({true, true, true}));
    QVERIFY(!hourglass());
    QCOMPARE(fixture.shown(), QStringList({u"2001/3/2|10001|A"_s, u"2001/3/3|10001|A"_s}));
}

void Form2RunTest::aQueryThatFailsTellsUnderTheHourglass() {
    Form2Fixture fixture;
    fixture.open(1);
    bool overTheMessage = false;
    fixture.answers.expect(u"MsgBox"_s, [&](QWidget& box) {
        overTheMessage = hourglass();
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    fixture.press(u"CmdQuery"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QVERIFY(overTheMessage);
    QVERIFY(!hourglass());
}

int main(int argc, char** argv) {
    return runTests<Form2RunTest>(argc, argv);
}

#include "Form2RunTest.moc"
