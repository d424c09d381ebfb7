#pragma once

#include "windows/master/MasterTab.h"

#include <array>

class QGridLayout;
class QGroupBox;
class QHBoxLayout;

namespace pontrel {

class DropList;
class OptionButton;

/// The tab of the time slots. Deliberate: a form and nothing more; it ties no field to another and fills in
/// no default.
class SlotPage : public RecordTab {
    Q_OBJECT
  public:
    explicit SlotPage(int tab);

    [[nodiscard]] bool entersAsTab() const override { return false; }
    [[nodiscard]] RecordSteps steps() override;

    /// Brings the options and the list up to date with the row; a value that the row does not have leaves
    /// them as they are.
    void showChoices();

  private:
    /// What another row's becoming current does. Deliberate: less than showChoices(); the list is looked at
    /// only where the row has no option.
    void showChoiceOfRow();
    [[nodiscard]] QHBoxLayout* makeHead();
    [[nodiscard]] QGroupBox* makePunchSettings();
    [[nodiscard]] QGroupBox* makeFlexibleSettings();
    void addTime(QGridLayout& grid, int row, int column, int index, const QString& caption,
                 const QString& spokenName, const QString& dataColumn);
    void addMinutes(QGridLayout& grid, int row, int column, int index, const QString& caption,
                    const QString& half, const QString& dataColumn);
    void showOption();
    void showListEntry();

    std::array<OptionButton*, 5> OptCT{};
    DropList* Combo1 = nullptr;
    QLineEdit* cardType_ = nullptr;    ///< Text4(7), never seen.
    QLineEdit* elasticType_ = nullptr; ///< Text4(6), never seen.
};

} // namespace pontrel
