#pragma once

#include "app/FormState.h"
#include "app/TabbedWindow.h"
#include "rules/reports/Catalogue.h"

#include <vector>

namespace pontrel {

class Cr1;
class ReportPage;

/// The report window "報表列印": what is chosen on its tabs becomes a report's file, its selection formula
/// and its named values, which go to the report control. Two tabs work figures out first.
class Form7 : public TabbedWindow {
    Q_OBJECT
  public:
    explicit Form7(QWidget* parent);

    /// Makes it known as module window 7.
    static void registerWindow();

  protected:
    void onLoad() override;
    void onUnload() override;

  private:
    void makePages();
    void connectControls();
    [[nodiscard]] ReportPage& page(ReportTab tab) const;

    void readTitle();
    void readLists();
    void readChoices();

    void Cmd_Click(ReportPage& front);
    /// Prints under the trap of the tabs whose reports need statements of their own.
    void printTrapped(const ReportChoice& choice);
    void print(const ReportChoice& choice);
    void PrintReport();
    void setValues(const std::vector<NamedValue>& values);

    Cr1* Cr1_;
    FormState form_;
    std::vector<ReportPage*> pages_;
    QString code_;             ///< Of the last report.
    SelectionFormula formula_; ///< The last one, of whatever tab, also where it failed.
};

} // namespace pontrel
