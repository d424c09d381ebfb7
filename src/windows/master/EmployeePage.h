#pragma once

#include "app/DatePair.h"
#include "windows/master/MasterTab.h"

#include <array>
#include <vector>

class QGridLayout;
class QLabel;
class QLineEdit;

namespace pontrel {

class TabPages;

/// The tab of the employees, on five pages: codes are looked up while they are typed, months entered as years
/// and months, and dates helped to become null.
class EmployeePage : public RecordTab {
    Q_OBJECT
  public:
    explicit EmployeePage(int tab);

    [[nodiscard]] RecordRules rules() override;
    [[nodiscard]] RecordSteps steps() override;

    void connectControls(FormState& form) override;

  Q_SIGNALS:
    void computeSeniority();   ///< The button "計算休假年資" was clicked.
    void computeEntitlement(); ///< The button "計算可休天數" was clicked.

  private:
    static constexpr int TextCount = 27;
    static constexpr int FirstCode = 3; ///< Of Text6: the box of the first code.
    static constexpr int DateCount = 4;

    /// A box of a plain column.
    struct TextField {
        int index; ///< Of Text6.
        QString caption;
        QString column;
    };
    /// A leave with its grant, what is taken of it and what is left.
    struct Balance {
        int index; ///< Of Text6, the grant.
        int used;  ///< Of Label25, as the next.
        int left;
        QString caption;
        QString usedCaption;
        QString columns; ///< What the names of its columns begin with.
    };

    // Which fields the page has, and where they sit.
    [[nodiscard]] QWidget* makeGeneralPage();
    [[nodiscard]] QWidget* makeLeavePage();
    [[nodiscard]] QWidget* makeTextPage(const std::vector<TextField>& texts);
    [[nodiscard]] QLineEdit* makeText6(int index, const QString& spokenName, const QString& column,
                                       int width = 0);
    [[nodiscard]] QLineEdit* makeFreeText6(int index, const QString& spokenName, int width);
    void addCodes(QGridLayout& grid);
    void placeDate(QGridLayout& grid, int row, int column0, int index, const QString& caption,
                   const QString& column);
    void addMonths(QGridLayout& grid, int row, int firstBox, int carrier, const QString& caption,
                   const QString& column);
    void addBalance(QGridLayout& grid, int row, const Balance& balance);

    // What they do.
    void Text6_Change(int index);
    void Text7_Change();
    void showMonths(int carrier);
    void takeMonths();
    void putSentinels();
    void endSave();
    void query();

    [[nodiscard]] QLineEdit& text6(int index) const { return *Text6.at(static_cast<std::size_t>(index)); }

    bool MonthsGuard =
        false; ///< Months are being copied from their boxes, so that the copy does not come back.
    TabPages* SSTab2 = nullptr;
    std::array<QLineEdit*, TextCount> Text6{};
    std::array<QLineEdit*, 2> Text7{};
    std::array<DateFields, DateCount> dates_{}; ///< TDBMask1 and TDBDate1.
    std::array<QLabel*, 8> Label25{};
};

} // namespace pontrel
