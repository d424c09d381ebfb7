#include "app/KeyHook.h"
#include "app/EnterAsTab.h"
#include "app/controls/Keys.h"
#include "app/controls/TDBMask.h"
#include "app/controls/TDBTime.h"
#include "support/AppSupport.h"
#include "support/Patience.h"

#include <QHBoxLayout>
#include <QKeySequence>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// A mask, a time and a box, and what the keys that go down in the mask find in it.
class Form : public QWidget {
  public:
    Form() {
        auto* row = new QHBoxLayout(this);
        for (QWidget* each : std::initializer_list<QWidget*>{mask, &time, &box})
            row->addWidget(each);
        show();
        if (!QTest::qWaitForWindowActive(this, PatienceMs))
            qFatal("the window does not become active");
        mask->setFocus();
    }

    void hook() {
        onKeyDown(*mask, [this](const QKeyEvent& key) {
            seen << QKeySequence(key.key()).toString() + u':' + mask->value();
            return false;
        });
    }
    void type(const QString& text) { QTest::keyClicks(focusWidget(), text); }
    void key(Qt::Key key) { QTest::keyClick(windowHandle(), key); }

    TDBMask* mask = new TDBMask(this);
    TDBTime time{this};
    QLineEdit box;
    QStringList seen;
};

} // namespace

/// Routines that see the keys of a box ahead of everything else.
class KeyHookTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aKeyIsSeenBeforeItsEffect();
    void enterIsSeenWhateverTheOrder_data();
    void enterIsSeenWhateverTheOrder();
    void aKeyThatIsTakenReachesNobodyElse();
    void otherBoxesKeepTheirKeys();
    void aBoxMayGoInTheRoutine();
};

void KeyHookTest::aKeyIsSeenBeforeItsEffect() {
    Form form;
    form.hook();
    form.type(u"90"_s);
    QCOMPARE(form.seen, QStringList({u"9:"_s, u"0:9"_s}));
    QCOMPARE(form.mask->value(), u"90"_s);
}

void KeyHookTest::enterIsSeenWhateverTheOrder_data() {
    QTest::addColumn<bool>("hookFirst");
    QTest::addRow("the hook, then Enter as Tab") << true;
    QTest::addRow("Enter as Tab, then the hook") << false;
}

void KeyHookTest::enterIsSeenWhateverTheOrder() {
    QFETCH(const bool, hookFirst);
    Form form;
    if (hookFirst)
        form.hook();
    EnterAsTab::install(form);
    if (!hookFirst)
        form.hook();
    form.type(u"900131"_s);
    form.seen.clear();
    form.key(Qt::Key_Return);
    QCOMPARE(form.seen.value(0), u"Return:900131"_s);
    QVERIFY(form.time.hasFocus());
}

void KeyHookTest::aKeyThatIsTakenReachesNobodyElse() {
    Form form;
    onKeyDown(*form.mask, [](const QKeyEvent& key) { return isEnter(key); });
    form.hook();
    EnterAsTab::install(form);
    form.key(Qt::Key_Enter);
    QVERIFY(form.mask->hasFocus());
    QCOMPARE(form.seen, QStringList());
    form.key(Qt::Key_7);
    QCOMPARE(form.seen, QStringList{u"7:"_s});
}

void KeyHookTest::otherBoxesKeepTheirKeys() {
    Form form;
    onKeyDown(*form.mask, [](const QKeyEvent&) { return true; });
    form.box.setFocus();
    form.type(u"abc"_s);
    QCOMPARE(form.box.text(), u"abc"_s);
}

void KeyHookTest::aBoxMayGoInTheRoutine() {
    Form form;
    onKeyDown(*form.mask, [&form](const QKeyEvent&) {
        delete std::exchange(form.mask, nullptr);
        return false;
    });
    onKeyDown(*form.mask, [&form](const QKeyEvent&) {
        form.seen << u"gone"_s;
        return false;
    });
    form.key(Qt::Key_1);
    QVERIFY(!form.mask);
    QCOMPARE(form.seen, QStringList());
}

int main(int argc, char** argv) {
    return runTests<KeyHookTest>(argc, argv);
}

#include "KeyHookTest.moc"
