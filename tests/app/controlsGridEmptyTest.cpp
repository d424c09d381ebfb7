#include "app/GridForm.h"

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QString WhatFirst = u"請先讀取打卡檔"_s;

/// Whether anything is painted where the rows stand.
bool isBlank(const TDBGrid& grid) {
    const QImage picture = grid.viewport()->grab().toImage();
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != picture.pixel(0, 0))
                return false;
        }
    }
    return true;
}

} // namespace

/// What a list without rows says in place of them.
class controlsGridEmptyTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void anEmptyListSaysWhatToDoFirst();
    void itSaysSoAgainWhenItsRowsHaveGone();
    void withoutATextItStaysBlank();
    void theWindowsOwnDescriptionStays();
};

void controlsGridEmptyTest::anEmptyListSaysWhatToDoFirst() {
    GridForm form;
    form.grid.setEmptyText(WhatFirst);
    form.open();
    QVERIFY(!isBlank(form.grid));
    QCOMPARE(form.grid.accessibleDescription(), WhatFirst);
    QCOMPARE(form.grid.model()->rowCount(), 0); // it is no row
    QCOMPARE(form.currentRow(), -1);
}

void controlsGridEmptyTest::itSaysSoAgainWhenItsRowsHaveGone() {
    GridForm form;
    form.grid.setEmptyText(WhatFirst);
    form.addPunches(2);
    form.open();
    QCOMPARE(form.grid.accessibleDescription(), QString());
    QCOMPARE(form.text(1, 0), u"000002"_s);
    form.store.database().execute(u"delete * from Atte01"_s);
    form.source.Refresh();
    QCOMPARE(form.grid.accessibleDescription(), WhatFirst);
    QVERIFY(!isBlank(form.grid));
    form.addPunches(1);
    form.source.Refresh();
    QCOMPARE(form.grid.accessibleDescription(), QString());
}

void controlsGridEmptyTest::withoutATextItStaysBlank() {
    GridForm form;
    form.grid.setAccessibleDescription(u"打卡記錄"_s);
    form.open();
    QVERIFY(isBlank(form.grid));
    QCOMPARE(form.grid.accessibleDescription(), u"打卡記錄"_s); // the window's own
}

void controlsGridEmptyTest::theWindowsOwnDescriptionStays() {
    GridForm form;
    form.grid.setAccessibleDescription(u"當日的打卡記錄"_s);
    form.grid.setEmptyText(WhatFirst);
    form.open();
    QCOMPARE(form.grid.accessibleDescription(), u"當日的打卡記錄 "_s + WhatFirst);
    form.addPunches(1);
    form.source.Refresh();
    QCOMPARE(form.grid.accessibleDescription(), u"當日的打卡記錄"_s);
}

int main(int argc, char** argv) {
    return runTests<controlsGridEmptyTest>(argc, argv);
}

#include "controlsGridEmptyTest.moc"
