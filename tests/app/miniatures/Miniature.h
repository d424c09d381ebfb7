#pragma once

#include "app/ControlNames.h"
#include "app/FocusWatch.h"
#include "app/GridTexts.h"
#include "app/IFrmQuery.h"
#include "app/KeyHook.h"
#include "app/LookupFixture.h"
#include "app/RecordFixture.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBMask.h"
#include "app/controls/TDBTime.h"
#include "store/StatementText.h"

#include <QGridLayout>

namespace pontrel::test {

/// A tab of a window to come in small: what it needs of the kit, without its looks.
class Miniature : public RecordTab {
  protected:
    using RecordTab::RecordTab;

    /// The fields below each other, under the list where there is one, and the bar.
    void stack(const QList<CodeBox*>& codes, const QList<QWidget*>& others, TDBGrid* list = nullptr) {
        auto* lines = new QGridLayout(&frame());
        for (const CodeBox* code : codes)
            code->addTo(*lines, lines->rowCount(), 0);
        for (QWidget* other : others)
            lines->addWidget(other, lines->rowCount(), 1);
        if (list)
            rows().addWidget(list);
        rows().addWidget(&frame());
        rows().addWidget(&bar());
    }
};

/// Clicks a row of a list, from 0.
inline void clickRow(TDBGrid& grid, int row) {
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier,
                      grid.visualRect(grid.model()->index(row, 0)).center());
}

/// The window of one miniature, open over a store with the employee 00001, and nothing looked up yet.
class MiniatureFixture : public RecordFixture {
  public:
    MiniatureFixture() {
        clearPicks();
        gAccount = QStringLiteral("tester");
        insertRow(store.database(), QStringLiteral("Base01"), {{u"TitleNo", u"10"}, {u"Title", u"科員"}});
        addEmployee(store.database(), QStringLiteral("00001"), {{u"EmpName", u"王一"}, {u"TitleNo", u"10"}});
    }
    ~MiniatureFixture() { clearPicks(); }

    using RecordFixture::press;
    void press(int button) { RecordFixture::press(QStringLiteral("CtrlCmd0(%1)").arg(button)); }
    [[nodiscard]] QStringList rows(const QString& table) { return rowsOf(store.database(), table); }
};

} // namespace pontrel::test
