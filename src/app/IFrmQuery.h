#pragma once

#include "rules/query/ListQuery.h"

#include <QDialog>

#include <array>

namespace pontrel {

class OptionButton;

/// The modal dialog "查詢選項", which leads on to the date and code dialogs that its choice needs.
class IFrmQuery : public QDialog {
    Q_OBJECT
  public:
    explicit IFrmQuery(QWidget* parent);

    /// Shows the dialog. Its button "確定" puts the choice into gQueryKind, and what the dialogs that follow
    /// give into their shared values; without a choice it sets nothing. Any other end leaves gQueryKind, so
    /// that the caller repeats the last kind of query. Throws RunTimeError.
    static void ask(QWidget* parent);

  private:
    void makeControls();
    void Command1_Click(int index);

    std::array<OptionButton*, 5> Option1{};
};

/// The selection that gQueryKind and the shared values ask for: see listStatement().
[[nodiscard]] std::optional<QString> queryStatement(const QString& table, const QString& dateColumn,
                                                    UnitQuery unitQuery = UnitQuery::None);

} // namespace pontrel
