#include "windows/master/Form1Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

struct CodeTab {
    QString table;
    QString boxes;
    QStringList labels;
    QStringList columns;
};

const QList<CodeTab> CodeTabs{
    {u"Base01"_s, u"Text1"_s, {u"職稱代碼："_s, u"職稱："_s}, {u"職稱代碼"_s, u"職稱"_s}},
    {u"Base02"_s, u"Text2"_s, {u"單位代碼："_s, u"單位名稱："_s}, {u"單位代碼"_s, u"單位名稱"_s}},
    {u"Base03"_s, u"Text3"_s, {u"聘雇別代碼："_s, u"聘雇類別："_s}, {u"聘雇代碼"_s, u"聘雇類別"_s}},
};

void addTitles(Database& database, int count) {
    for (int code = 1; code <= count; ++code)
        insertRow(database, u"Base01"_s,
                  {{u"TitleNo", u"%1"_s.arg(code)}, {u"Title", u"職稱%1"_s.arg(code)}});
}

} // namespace

/// The window as a whole, and its three plain code lists.
class Form1CodesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void opensOnTheTitles();
    void tabsHaveTheirCaptions();
    void codeListsHaveTheirLabelsAndColumns();
    void aClickOnTheTabInFrontOpensItAnew();
    void aClickOnTheTabInFrontKeepsAnEdit();
    void aFailedOpenOfATabTells();
};

void Form1CodesTest::opensOnTheTitles() {
    Form1Fixture fixture;
    addTitles(fixture.database(), 3);
    fixture.open();
    QCOMPARE(fixture.mainWindow().windowTitle(), u"基本資料"_s);
    QCOMPARE(fixture.form().geometry(), QRect(0, 0, 574, 418));
    QCOMPARE(fixture.tabs().currentIndex(), 0);
    QCOMPARE(fixture.panel(1), u"資料錄:1/3"_s);
    QCOMPARE(fixture.panel(2), QString());
    QCOMPARE(fixture.text(u"Text1(0)"_s), u"1"_s);
    QCOMPARE(fixture.text(u"Text1(1)"_s), u"職稱1"_s);
}

void Form1CodesTest::tabsHaveTheirCaptions() {
    Form1Fixture fixture;
    fixture.open();
    QStringList captions;
    for (int tab = 0; tab < fixture.tabs().count(); ++tab)
        captions += fixture.tabs().tabText(tab);
    QCOMPARE(captions, QStringList({u"職稱設定"_s, u"單位設定"_s, u"聘僱類別"_s, u"時段設定"_s, u"班別設定"_s,
                                    u"員工資料"_s}));
}

void Form1CodesTest::codeListsHaveTheirLabelsAndColumns() {
    Form1Fixture fixture;
    fixture.open();
    for (int tab = 0; tab < CodeTabs.size(); ++tab) {
        fixture.clickTab(tab);
        const CodeTab& codes = CodeTabs.at(tab);
        QCOMPARE(fixture.captionsOf(u"TDBGrid2(%1)"_s.arg(tab)), codes.columns);
        const QWidget& frame = fixture.at(u"Frame1(%1)"_s.arg(tab));
        QCOMPARE(frame.property("title").toString(), u"編輯區"_s);
        QStringList labels;
        for (const auto* label : frame.findChildren<QLabel*>())
            labels += label->text() + u'|' + label->buddy()->objectName();
        QCOMPARE(labels, QStringList({codes.labels.at(0) + u'|' + codes.boxes + u"(0)"_s,
                                      codes.labels.at(1) + u'|' + codes.boxes + u"(1)"_s}));
    }
}

void Form1CodesTest::aClickOnTheTabInFrontOpensItAnew() {
    Form1Fixture fixture;
    addTitles(fixture.database(), 3);
    fixture.open();
    fixture.press(u"CtrlCmd0(9)"_s);
    fixture.clickTab(0);
    QCOMPARE(fixture.panel(1), u"資料錄:1/3"_s);
}

void Form1CodesTest::aClickOnTheTabInFrontKeepsAnEdit() {
    Form1Fixture fixture;
    addTitles(fixture.database(), 1);
    fixture.open();
    fixture.press(u"CtrlCmd0(1)"_s);
    fixture.type(u"Text1(1)"_s, u"改"_s);
    fixture.clickTab(0);
    QCOMPARE(fixture.panel(2), u"修改資料"_s);
    QCOMPARE(fixture.text(u"Text1(1)"_s), u"改"_s);
}

void Form1CodesTest::aFailedOpenOfATabTells() {
    Form1Fixture fixture;
    fixture.open();
    QVERIFY(QFile::remove(fixture.store.path()));
    fixture.answers.expectMsgBox();
    fixture.clickTab(1);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().title, u"異常警告"_s);
    QCOMPARE(fixture.answers.seen().constFirst().text, u"資料庫開啟異常,請洽程式設計師"_s);
    // The flag stands, the toolbar is free, and the window is loaded beneath Form0.
    QVERIFY(gOpenFailed);
    QVERIFY(fixture.mainWindow().Tb().isEnabled());
    QVERIFY(moduleWindow(1));
    QCOMPARE(fixture.mainWindow().windowTitle(), u"Pontrel V1.1 - Norvale"_s);
    gOpenFailed = false;
}

int main(int argc, char** argv) {
    return runTests<Form1CodesTest>(argc, argv);
}

#include "Form1CodesTest.moc"
