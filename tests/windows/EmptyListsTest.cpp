#include "app/controls/TDBGrid.h"
#include "demo/Demo.h"
#include "support/Builders.h"
#include "windows/EveryWindow.h"

#include <QListWidget>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

/// Every one of these texts begins a sentence so; other descriptions do not.
bool saysWhatFirst(const QString& description) {
    return description.contains(u"沒有") || description.contains(u"假單存檔後");
}

bool isBlank(const TDBGrid& grid) {
    const QImage picture = grid.viewport()->grab().toImage();
    const QImage blank = [&picture] {
        QImage filled(picture.size(), picture.format());
        filled.fill(picture.pixelColor(0, 0));
        return filled;
    }();
    return picture == blank;
}

/// What a walk has found of the lists in sight.
class Lists {
  public:
    void look(const QWidget& window, const QString& place) {
        for (const TDBGrid* grid : window.findChildren<TDBGrid*>()) {
            if (!grid->isVisible())
                continue;
            const bool isEmpty = grid->model()->rowCount() == 0;
            const QString says = grid->accessibleDescription();
            (isEmpty ? empty_ : filled_) += 1;
            if (isEmpty != saysWhatFirst(says) || (isEmpty && isBlank(*grid)))
                faults_ << u"%1: %2 says \"%3\""_s.arg(place, grid->objectName(), says);
        }
    }
    [[nodiscard]] QString told() const { return faults_.join(u'\n'); }
    [[nodiscard]] int empty() const { return empty_; }
    [[nodiscard]] int filled() const { return filled_; }

  private:
    QStringList faults_;
    int empty_ = 0;
    int filled_ = 0;
};

Lists listsOf(const TestStore& store) {
    const Shell shell(store);
    registerWindows();
    Lists lists;
    for (const EveryWindow& each : everyWindow()) {
        each.open();
        onEveryPage(*each.opened(), each.title, [&](const QString& page) {
            QCoreApplication::processEvents();
            lists.look(*each.opened(), page);
        });
        each.opened()->unload();
    }
    return lists;
}

} // namespace

/// Every list of the program that has no row says what to do first, and only then.
class EmptyListsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void listsOfAnEmptyStoreSayWhatToDoFirst();
    void listsWithRowsSayNothing();
    void theLookupsSayItToo();
    void aBatchSaysWhatOpensIt();
};

void EmptyListsTest::listsOfAnEmptyStoreSayWhatToDoFirst() {
    TestStore store;
    store.database().execute(u"delete * from syst02"_s);
    const Lists lists = listsOf(store);
    QVERIFY2(lists.told().isEmpty(), qPrintable(lists.told()));
    QVERIFY(lists.empty() >= 15);
    QCOMPARE(lists.filled(), 0);
}

void EmptyListsTest::listsWithRowsSayNothing() {
    TestStore store;
    createDemo(store.database(), store.folder());
    const Lists lists = listsOf(store);
    QVERIFY2(lists.told().isEmpty(), qPrintable(lists.told()));
    QVERIFY(lists.filled() >= 10);
}

void EmptyListsTest::theLookupsSayItToo() {
    const TestStore store;
    const Shell shell(store);
    PromptAnswers answers;
    QString says;
    answers.expect(u"QFrmEmpNO"_s, [&says](QWidget& dialog) {
        says = control<TDBGrid>(dialog, u"TDBGrid2"_s).accessibleDescription();
        closeDialog(dialog);
    });
    Lookup::ask(LookupKind::QFrmEmpNO, gMDI);
    QCOMPARE(says, u"沒有可選的資料，請先建立。"_s);
    QCOMPARE(answers.trouble(), QString());
}

void EmptyListsTest::aBatchSaysWhatOpensIt() {
    TestStore store;
    addEmployee(store.database(), u"10001"_s, {{u"EmpName", u"王小明"}});
    const Shell shell(store);
    PromptAnswers answers;
    OpenToolWindow(6);
    Window& window = *moduleWindow(6);
    onEveryPage(window, {}, [&](const QString& /*page*/) {
        const auto lists = window.findChildren<QListWidget*>(u"List1"_s);
        if (lists.isEmpty() || !lists.first()->isVisible())
            return;
        QListWidget& list = *lists.first();
        QCOMPARE(list.accessibleDescription(), u"請先按「新增」，員工會列在這裡。"_s);
        click(control(window, u"CmdBat(0)"_s));
        QCOMPARE(list.count(), 1);
        QCOMPARE(list.accessibleDescription(), QString());
        click(control(window, u"CMDCTRL(1)"_s)); // all are chosen: nothing is to be done first
        QCOMPARE(list.count(), 0);
        QCOMPARE(list.accessibleDescription(), QString());
        answers.expectMsgBox(MsgAnswer::No);
        click(control(window, u"CmdBat(1)"_s));
    });
    QCOMPARE(answers.seen().size(), 1);
    QCOMPARE(answers.trouble(), QString());
}

int main(int argc, char** argv) {
    return runTests<EmptyListsTest>(argc, argv);
}

#include "EmptyListsTest.moc"
