#include "windows/help/HelpFixture.h"

#include <QDesktopServices>
#include <QScrollBar>
#include <QTextBlock>
#include <QToolButton>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

/// The help, open at the beginning of a chapter.
class Help {
  public:
    explicit Help(const HelpPlace& place = {u"index.md"_s}) : shell_(store_) {
        HelpWindow::open(place);
        if (!QTest::qWaitForWindowActive(HelpWindow::current()))
            qFatal("the help is not active");
    }
    ~Help() { closeHelp(); }
    Help(const Help&) = delete;
    Help& operator=(const Help&) = delete;

    [[nodiscard]] HelpWindow& window() const { return *HelpWindow::current(); }
    [[nodiscard]] QString found() const { return control<QLabel>(window(), u"LblFound"_s).text(); }
    [[nodiscard]] QString selected() const { return helpText().textCursor().selectedText(); }
    void press(const QString& button) const { click(control(window(), button)); }
    void find(const QString& text) const {
        auto& wanted = control<QLineEdit>(window(), u"TxtFind"_s);
        wanted.setFocus();
        wanted.setText(text);
    }
    [[nodiscard]] bool isOn(const QString& button) const { return control(window(), button).isEnabled(); }

  private:
    TestStore store_;
    Shell shell_;
};

/// How often the text stands in the whole manual.
int timesInManual(const QString& text) {
    qsizetype times = 0;
    const Manual& manual = Manual::ofProgram();
    for (int chapter = 0; chapter < static_cast<int>(manual.chapters().size()); ++chapter)
        times += manual.shownText(chapter).count(text, Qt::CaseInsensitive);
    return static_cast<int>(times);
}

/// Stands for the desktop, which would open links that lead out.
class Desktop : public QObject {
    Q_OBJECT
  public:
    Desktop() {
        for (const QString& scheme : schemes())
            QDesktopServices::setUrlHandler(scheme, this, "open");
    }
    ~Desktop() override {
        for (const QString& scheme : schemes())
            QDesktopServices::unsetUrlHandler(scheme);
    }
    int opened = 0;

  public Q_SLOTS:
    void open(const QUrl& /*url*/) { ++opened; }

  private:
    static QStringList schemes() { return {u"http"_s, u"https"_s, u"file"_s, u"mailto"_s}; }
};

} // namespace

/// The window of the help: what it shows, and where its controls lead.
class HelpWindowTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void itsControlsAreWithoutFault();
    void theContentsLeadToEveryHeading();
    void theTextOfAChapterIsShownWithItsPictures();
    void linksLeadFromChapterToChapter();
    void linksThatLeadOutAreNotFollowed();
    void backAndForwardGoWhereOneHasBeen();
    void theSearchGoesThroughAllChapters();
    void aSearchThatFindsNothingSaysSo();
    void searchKeysWorkFromAnywhere();
    void theTextGrowsAndShrinksWithinBounds();
    void anUnknownPlaceLeavesWhatIsShown();
};

void HelpWindowTest::itsControlsAreWithoutFault() {
    const Help help;
    QCoreApplication::processEvents();
    QCOMPARE(controlFaults(help.window()).join(u'\n'), QString());
    help.find(u"時段"_s);
    QCOMPARE(controlFaults(help.window()).join(u'\n'), QString());
    // Tab goes through the links of a chapter as well, so that it comes to the text many times.
    QSet<QString> reached;
    for (int stop = 0; stop < 60; ++stop) {
        keyInHelp(Qt::Key_Tab);
        reached << help.window().focusWidget()->objectName();
    }
    for (const QString& name : {u"HelpTree"_s, u"HelpText"_s, u"TxtFind"_s, u"CmdFindPrevious"_s,
                                u"CmdFindNext"_s, u"CmdZoomIn"_s, u"CmdZoomOut"_s, u"CmdClose"_s})
        QVERIFY2(reached.contains(name), qPrintable(name));
}

void HelpWindowTest::theContentsLeadToEveryHeading() {
    const Help help;
    const auto& tree = control<QTreeWidget>(help.window(), u"HelpTree"_s);
    QStringList inTree;
    QTreeWidgetItemIterator item(const_cast<QTreeWidget*>(&tree));
    for (; *item; ++item) {
        const_cast<QTreeWidget&>(tree).setCurrentItem(*item);
        const HelpPlace place = help.window().place();
        const QTreeWidgetItem* top = *item;
        while (top->parent())
            top = top->parent();
        QCOMPARE(place.heading, top == *item ? QString() : (*item)->text(0));
        QCOMPARE(Manual::ofProgram()
                     .chapters()
                     .at(static_cast<std::size_t>(Manual::ofProgram().find(place.chapter)))
                     .title,
                 top->text(0));
        inTree << (*item)->text(0);
    }
    QStringList inManual;
    for (const Manual::Chapter& chapter : Manual::ofProgram().chapters()) {
        for (const Manual::Heading& heading : chapter.headings) {
            if (heading.level <= 3)
                inManual << heading.text;
        }
    }
    QVERIFY(inManual.size() > 50);
    QCOMPARE(inTree, inManual);
}

void HelpWindowTest::theTextOfAChapterIsShownWithItsPictures() {
    const Help help({u"attendance.md"_s, u"異常處理"_s});
    const QTextDocument& document = *helpText().document();
    QCOMPARE(document.toPlainText(),
             Manual::ofProgram().shownText(Manual::ofProgram().find(u"attendance.md"_s)));
    int pictures = 0;
    int widest = 0;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto part = block.begin(); !part.atEnd(); ++part) {
            const QTextImageFormat format = part.fragment().charFormat().toImageFormat();
            if (!format.isValid())
                continue;
            ++pictures;
            const QImage picture =
                document.resource(QTextDocument::ImageResource, QUrl(format.name())).value<QImage>();
            QVERIFY2(!picture.isNull(), qPrintable(format.name()));
            widest = std::max(widest, picture.width());
            QVERIFY2(picture.deviceIndependentSize().width() <= 640, qPrintable(format.name()));
        }
    }
    QVERIFY(pictures > 3);
    QVERIFY(widest > 640);
    QVERIFY(help.window().windowTitle().startsWith(u"出勤管理"_s));
}

void HelpWindowTest::linksLeadFromChapterToChapter() {
    const Help help;
    Q_EMIT helpText().anchorClicked(QUrl(u"attendance.md#異常處理"_s));
    QCOMPARE(placeInHelp(), u"attendance.md#異常處理"_s);
    Q_EMIT helpText().anchorClicked(QUrl(u"#讀取記錄"_s));
    QCOMPARE(placeInHelp(), u"attendance.md#讀取記錄"_s);
    Q_EMIT helpText().anchorClicked(QUrl(u"leave.md"_s));
    QCOMPARE(placeInHelp(), u"leave.md#"_s);
    // The first link of the first chapter, as the mouse finds it.
    help.window().goTo({u"index.md"_s});
    QTextCursor link(helpText().document());
    while (!link.charFormat().isAnchor() && link.movePosition(QTextCursor::NextCharacter))
        ;
    const QString target = link.charFormat().anchorHref();
    QTest::mouseClick(helpText().viewport(), Qt::LeftButton, Qt::NoModifier,
                      helpText().cursorRect(link).center());
    QCOMPARE(placeInHelp(), target + u'#');
}

void HelpWindowTest::linksThatLeadOutAreNotFollowed() {
    const Help help;
    Desktop desktop;
    for (const QString& link : {u"https://example.org/"_s, u"file:///etc/passwd"_s, u"mailto:a@b"_s,
                                u"../store.md"_s, u"no-such-chapter.md"_s}) {
        Q_EMIT helpText().anchorClicked(QUrl(link));
        QCOMPARE(placeInHelp(), u"index.md#"_s);
    }
    QCOMPARE(desktop.opened, 0);
    QVERIFY(!helpText().openLinks());
    QVERIFY(!helpText().openExternalLinks());
}

void HelpWindowTest::backAndForwardGoWhereOneHasBeen() {
    const Help help;
    QVERIFY(!help.isOn(u"CmdBack"_s));
    QVERIFY(!help.isOn(u"CmdForward"_s));
    help.window().goTo({u"attendance.md"_s, u"異常處理"_s});
    const int scrolled = helpText().verticalScrollBar()->value();
    QVERIFY(scrolled > 0);
    help.window().goTo({u"leave.md"_s});
    help.press(u"CmdBack"_s);
    QCOMPARE(placeInHelp().section(u'#', 0, 0), u"attendance.md"_s);
    QCOMPARE(helpText().verticalScrollBar()->value(), scrolled);
    keyInHelp(Qt::Key_Left, Qt::AltModifier);
    QCOMPARE(placeInHelp(), u"index.md#"_s);
    QVERIFY(!help.isOn(u"CmdBack"_s));
    help.press(u"CmdForward"_s);
    keyInHelp(Qt::Key_Right, Qt::AltModifier);
    QCOMPARE(placeInHelp(), u"leave.md#"_s);
    QVERIFY(!help.isOn(u"CmdForward"_s));
    // From the middle, what lay ahead is forgotten.
    help.press(u"CmdBack"_s);
    help.window().goTo({u"system.md"_s});
    QVERIFY(!help.isOn(u"CmdForward"_s));
    help.press(u"CmdBack"_s);
    QCOMPARE(placeInHelp().section(u'#', 0, 0), u"attendance.md"_s);
}

void HelpWindowTest::theSearchGoesThroughAllChapters() {
    const Help help;
    const QString wanted = u"重新計算"_s;
    const int times = timesInManual(wanted);
    QVERIFY(times > 3);
    help.find(wanted);
    QSet<QString> chapters;
    for (int hit = 1; hit <= times; ++hit) {
        QCOMPARE(help.found(), u"第 %1 處，共 %2 處"_s.arg(hit).arg(times));
        QCOMPARE(help.selected(), wanted);
        QVERIFY(helpText().viewport()->rect().intersects(helpText().cursorRect()));
        chapters << placeInHelp().section(u'#', 0, 0);
        help.press(u"CmdFindNext"_s);
    }
    QVERIFY(chapters.size() > 2);
    QCOMPARE(help.found(), u"第 1 處，共 %1 處"_s.arg(times)); // around
    help.press(u"CmdFindPrevious"_s);
    QCOMPARE(help.found(), u"第 %1 處，共 %1 處"_s.arg(times));
    // The search begins at what is in sight.
    help.window().goTo({u"leave.md"_s});
    help.find(u"假單"_s);
    QCOMPARE(placeInHelp().section(u'#', 0, 0), u"leave.md"_s);
    help.find(QString());
    QCOMPARE(help.found(), QString());
}

void HelpWindowTest::aSearchThatFindsNothingSaysSo() {
    const Help help;
    int bells = 0;
    setBell([&bells] { ++bells; });
    help.find(u"no such text anywhere"_s);
    QCOMPARE(help.found(), u"找不到"_s);
    QCOMPARE(placeInHelp(), u"index.md#"_s);
    help.press(u"CmdFindNext"_s);
    QCOMPARE(bells, 1);
    QCOMPARE(placeInHelp(), u"index.md#"_s);
    setBell({});
}

void HelpWindowTest::searchKeysWorkFromAnywhere() {
    const Help help;
    keyInHelp(Qt::Key_F3);
    QCOMPARE(help.window().focusWidget()->objectName(), u"TxtFind"_s);
    helpText().setFocus();
    keyInHelp(Qt::Key_F, Qt::ControlModifier);
    QCOMPARE(help.window().focusWidget()->objectName(), u"TxtFind"_s);
    help.find(u"F1"_s);
    const int times = timesInManual(u"F1"_s);
    QVERIFY(times > 1);
    keyInHelp(Qt::Key_Return);
    QCOMPARE(help.found(), u"第 2 處，共 %1 處"_s.arg(times));
    helpText().setFocus();
    keyInHelp(Qt::Key_F3);
    keyInHelp(Qt::Key_F3, Qt::ShiftModifier);
    QCOMPARE(help.found(), u"第 2 處，共 %1 處"_s.arg(times));
}

void HelpWindowTest::theTextGrowsAndShrinksWithinBounds() {
    const Help help({u"attendance.md"_s, u"異常處理"_s});
    const int pixels = helpText().font().pixelSize();
    help.press(u"CmdZoomIn"_s);
    keyInHelp(Qt::Key_Plus, Qt::ControlModifier);
    QCOMPARE(help.window().zoom(), 120);
    QCOMPARE(helpText().font().pixelSize(), pixels * 120 / 100);
    QCOMPARE(placeInHelp(), u"attendance.md#異常處理"_s);
    turnWheel(*helpText().viewport(), true);
    QCOMPARE(help.window().zoom(), 120);
    for (int step = 0; step < 40; ++step)
        help.press(u"CmdZoomIn"_s);
    QCOMPARE(help.window().zoom(), HelpWindow::MostZoom);
    for (int step = 0; step < 40; ++step)
        help.press(u"CmdZoomOut"_s);
    QCOMPARE(help.window().zoom(), HelpWindow::LeastZoom);
    keyInHelp(Qt::Key_0, Qt::ControlModifier);
    QCOMPARE(help.window().zoom(), 100);
    QCOMPARE(helpText().font().pixelSize(), pixels);
}

void HelpWindowTest::anUnknownPlaceLeavesWhatIsShown() {
    const Help help({u"leave.md"_s});
    help.window().goTo({u"no-such-chapter.md"_s});
    QCOMPARE(placeInHelp(), u"leave.md#"_s);
    QVERIFY(!help.isOn(u"CmdBack"_s));
    help.window().goTo({u"system.md"_s, u"no such heading"_s});
    QCOMPARE(placeInHelp(), u"system.md#"_s);
}

int main(int argc, char** argv) {
    return runTests<HelpWindowTest>(argc, argv);
}

#include "HelpWindowTest.moc"
