#pragma once

#include <QDialog>

#include <array>
#include <optional>

class QRadioButton;

namespace pontrel {

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

    std::array<QRadioButton*, 5> Option1{};
};

/// Which windows know a query by day and unit.
enum class UnitQuery { None, ByDayAndUnit };

/// The selection that gQueryKind and the shared values ask for, over a table whose days stand in that column;
/// nothing where the kind sets none, so that the list stays as it is.
[[nodiscard]] std::optional<QString> queryStatement(const QString& table, const QString& dateColumn,
                                                    UnitQuery unitQuery = UnitQuery::None);

} // namespace pontrel
