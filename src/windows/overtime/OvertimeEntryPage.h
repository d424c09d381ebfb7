#pragma once

#include "app/RecordTab.h"

class QLabel;
class QLayout;
class QLineEdit;

namespace pontrel {

class TDBTime;

/// The tab where overtime is entered row by row. Beside the row stand the raw punches of the day, as a
/// reference for its times. It refuses nothing: what the store takes is saved, an unknown employee too.
class OvertimeEntryPage : public RecordTab {
    Q_OBJECT
  public:
    OvertimeEntryPage();

    [[nodiscard]] RecordRules rules() override;
    [[nodiscard]] RecordSteps steps() override;
    void connectControls(FormState& form) override;

  private:
    [[nodiscard]] QLayout* makeEmployee();
    [[nodiscard]] QLayout* makeTimes();
    [[nodiscard]] QLayout* makeRest();
    [[nodiscard]] QLayout* makePunches();

    void startRow();
    void fillHours();
    void showPunches();

    CodeBox* employee_ = nullptr; ///< Text1(0)
    DateFields day_;
    TDBTime* begin_ = nullptr;   ///< overTime(0)
    TDBTime* end_ = nullptr;     ///< overTime(1)
    QLineEdit* hours_ = nullptr; ///< Text1(4)
    QLabel* account_ = nullptr;  ///< Label4(3)
    DataSource* punches_;        ///< Data2
};

} // namespace pontrel
