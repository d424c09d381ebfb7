#include "app/EnterAsTab.h"
#include "app/LookupFixture.h"
#include "support/Patience.h"

#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

using enum LookupKind;

/// A screen with a code field, its search button and a box behind them.
class Screen : public QWidget {
  public:
    QLineEdit field;
    QLineEdit next;
    QPushButton* Search;
    QStringList events; ///< Changes of the field, and the Enter key pressed in it.

    explicit Screen(LookupKind kind, LookupKey key = LookupKey::None)
        : Search(makeSearchButton(this, u"Search"_s, u"查詢代碼"_s)) {
        auto* rows = new QVBoxLayout(this);
        for (QWidget* each :
             {static_cast<QWidget*>(&field), static_cast<QWidget*>(Search), static_cast<QWidget*>(&next)})
            rows->addWidget(each);
        setTabOrder(&field, &next);
        setTabOrder(&next, Search);
        onEvent(Search, &QPushButton::clicked, this, [this, kind, key] { searchCode(kind, field, key); });
        onEvent(&field, &QLineEdit::textChanged, this,
                [this](const QString& text) { events << u"change to "_s + text; });
        onEvent(&field, &QLineEdit::returnPressed, this,
                [this] { events << (field.hasFocus() ? u"Enter in the field"_s : u"Enter elsewhere"_s); });
        show();
        if (!QTest::qWaitForWindowActive(this, PatienceMs))
            qFatal("the screen does not become active");
        field.setFocus();
    }
};

void addUnits(Database& database) {
    insertRow(database, u"Base02"_s, {{u"UnitNo", u"10"}, {u"Unit", u"總務科"}});
    insertRow(database, u"Base02"_s, {{u"UnitNo", u"20"}, {u"Unit", u"人事室"}});
}

} // namespace

/// What the search buttons beside code fields do.
class LookupSearchTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void okFillsTheField();
    void theFirstSearchCancelledClearsTheField();
    void theSecondSearchCancelledWritesBackTheEarlierPick();
    void aCancelWritesBackThePickOfAnotherScreen();
    void picksOfOtherKindsDoNotCount();
    void theTextComesBeforeFocusAndEnter();
    void theTabKeyMovesOnFromTheField();
    void theButtonHasAPicture();
};

void LookupSearchTest::okFillsTheField() {
    LookupFixture fixture;
    addUnits(fixture.database());
    Screen screen(QFrmUnitNo);
    fixture.answers.expect(u"QFrmUnitNo"_s, [](QWidget& dialog) {
        clickRow(dialog, 1);
        clickOk(dialog);
    });
    click(*screen.Search);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(screen.field.text(), u"20"_s);
    QCOMPARE(screen.events, QStringList{u"change to 20"_s});
    QVERIFY(!screen.field.hasFocus());
}

void LookupSearchTest::theFirstSearchCancelledClearsTheField() {
    LookupFixture fixture;
    addUnits(fixture.database());
    Screen screen(QFrmUnitNo);
    screen.field.setText(u"typed"_s);
    fixture.answers.expectClick(u"QFrmUnitNo"_s, u"Command1(1)"_s);
    click(*screen.Search);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(screen.field.text(), QString());
}

void LookupSearchTest::theSecondSearchCancelledWritesBackTheEarlierPick() {
    LookupFixture fixture;
    addUnits(fixture.database());
    Screen screen(QFrmUnitNo);
    fixture.answers.expectClick(u"QFrmUnitNo"_s, u"Command1(0)"_s);
    click(*screen.Search);
    screen.field.setText(u"typed"_s);
    fixture.answers.expectClick(u"QFrmUnitNo"_s, u"Command1(1)"_s);
    click(*screen.Search);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(screen.field.text(), u"10"_s);
}

void LookupSearchTest::aCancelWritesBackThePickOfAnotherScreen() {
    LookupFixture fixture;
    addUnits(fixture.database());
    {
        Screen other(QFrmUnitNo);
        fixture.answers.expect(u"QFrmUnitNo"_s, [](QWidget& dialog) {
            clickRow(dialog, 1);
            clickOk(dialog);
        });
        click(*other.Search);
    }
    Screen screen(QFrmUnitNo);
    screen.field.setText(u"typed"_s);
    fixture.answers.expect(u"QFrmUnitNo"_s,
                           [](QWidget& dialog) { QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape); });
    click(*screen.Search);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(screen.field.text(), u"20"_s);
}

void LookupSearchTest::picksOfOtherKindsDoNotCount() {
    LookupFixture fixture;
    gPickUnitNo = u"20"_s;
    Screen screen(QFrmClsNo);
    screen.field.setText(u"typed"_s);
    fixture.answers.expectClick(u"QFrmClsNo"_s, u"Command1(1)"_s);
    click(*screen.Search);
    QCOMPARE(screen.field.text(), QString());
    QCOMPARE(gPickUnitNo, u"20"_s);
}

void LookupSearchTest::theTextComesBeforeFocusAndEnter() {
    LookupFixture fixture;
    addUnits(fixture.database());
    Screen screen(QFrmUnitNo, LookupKey::Enter);
    fixture.answers.expectClick(u"QFrmUnitNo"_s, u"Command1(0)"_s);
    click(*screen.Search);
    QCOMPARE(fixture.answers.trouble(), QString());
    QTRY_VERIFY_WITH_TIMEOUT(screen.field.hasFocus(), PatienceMs);
    QCOMPARE(screen.events.size(), 2);
    QCOMPARE(screen.events.at(0), u"change to 10"_s);
    QVERIFY(screen.events.at(1).startsWith(u"Enter"_s));
}

void LookupSearchTest::theTabKeyMovesOnFromTheField() {
    LookupFixture fixture;
    addUnits(fixture.database());
    Screen screen(QFrmUnitNo, LookupKey::Tab);
    fixture.answers.expectClick(u"QFrmUnitNo"_s, u"Command1(1)"_s);
    click(*screen.Search);
    QCOMPARE(fixture.answers.trouble(), QString());
    QTRY_VERIFY_WITH_TIMEOUT(screen.next.hasFocus(), PatienceMs);
    QCOMPARE(screen.field.text(), QString());
}

void LookupSearchTest::theButtonHasAPicture() {
    LookupFixture fixture;
    Screen screen(QFrmUnitNo);
    QVERIFY(!screen.Search->icon().isNull());
    QVERIFY(screen.Search->text().isEmpty());
    QCOMPARE(screen.Search->objectName(), u"Search"_s);
    QCOMPARE(screen.Search->accessibleName(), u"查詢代碼"_s);
}

int main(int argc, char** argv) {
    return runTests<LookupSearchTest>(argc, argv);
}

#include "LookupSearchTest.moc"
