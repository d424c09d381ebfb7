#pragma once

#include "app/controls/TDBGrid.h"
#include "app/controls/TDBGridModel.h"
#include "store/DataSource.h"
#include "support/AppSupport.h"
#include "support/Builders.h"
#include "support/Patience.h"
#include "support/TestStore.h"

#include <QHeaderView>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QVBoxLayout>

namespace pontrel::test {

/// A store of punches, a grid over them and a box after it.
struct GridForm : QWidget {
    TestStore store;
    DataSource source;
    TDBGrid grid;
    QLineEdit next;

    GridForm() {
        auto* rows = new QVBoxLayout(this);
        rows->addWidget(&grid);
        rows->addWidget(&next);
        resize(500, 300);
        grid.setColumns({{QStringLiteral("員工碼"), QStringLiteral("empno"), 80, Qt::AlignLeft, {}},
                         {QStringLiteral("打卡日期"), QStringLiteral("UseDate"), 90, Qt::AlignLeft, {}},
                         {QStringLiteral("打卡時間"), QStringLiteral("UseTime"), 80, Qt::AlignRight, {}},
                         {QStringLiteral("班別"), QStringLiteral("Class"), 60, Qt::AlignLeft, {}}});
        grid.setSource(&source);
        source.setDatabaseName(store.path());
    }

    void addPunches(int count) {
        const Stage stage(store.database());
        for (int number = 1; number <= count; ++number)
            store.database().execute(QStringLiteral("insert into "
                                                    "Atte01(EmpNo,UseDate,UseTime,class,ReaderID)values('%1',"
                                                    "#2001/3/5#,#08:00:07#,'255','1')")
                                         .arg(number, 6, 10, QLatin1Char('0')));
    }

    void open(const QString& recordSource = QStringLiteral("Atte01")) {
        source.setRecordSource(recordSource);
        source.Refresh();
        show();
        QVERIFY(QTest::qWaitForWindowActive(this, PatienceMs));
    }

    [[nodiscard]] QString text(int row, int column) const {
        return grid.model()->index(row, column).data().toString();
    }
    /// How many rows the model has read since it had read that many.
    [[nodiscard]] qint64 rowsReadSince(qint64 before) const { return rowsRead() - before; }
    [[nodiscard]] qint64 rowsRead() const {
        return static_cast<const TDBGridModel*>(grid.model())->rowsRead();
    }
    /// The most that a change of view may read: the rows in sight, those that are cut off included, and the
    /// current one.
    [[nodiscard]] qint64 rowsInSight() const {
        return grid.viewport()->height() / grid.verticalHeader()->defaultSectionSize() + 3;
    }
    void commit(const QString& text) {
        QInputMethodEvent event;
        event.setCommitString(text);
        QCoreApplication::sendEvent(&grid, &event);
    }
    [[nodiscard]] int currentRow() const { return grid.currentIndex().row(); }
    [[nodiscard]] QList<int> selectedRows() const {
        QList<int> rows;
        for (const QModelIndex& index : grid.selectionModel()->selectedRows())
            rows << index.row();
        return rows;
    }
};

} // namespace pontrel::test
