#pragma once

#include "app/RecordFields.h"
#include "app/RecordPage.h"

#include <QWidget>

class QVBoxLayout;

namespace pontrel {

/// One tab of the master data: the edit area Frame1(t), the bar CtrlCmd<t> and, on some tabs, a grid, over
/// the source Data1(t) and its table "Base0" followed by t + 1: the order of the tabs is part of the data
/// model.
class MasterPage : public QWidget {
    Q_OBJECT
  public:
    MasterPage(int tab, const QString& frameCaption);

    [[nodiscard]] int tab() const { return tab_; }
    [[nodiscard]] QString table() const { return tableOf(tab_); }
    [[nodiscard]] DataSource& source() { return *source_; }

    /// What the record page of this tab works on, with no tabs and no status bar yet.
    [[nodiscard]] virtual RecordParts parts();
    [[nodiscard]] virtual RecordRules rules() { return {}; }
    [[nodiscard]] virtual RecordSteps steps() { return {}; }
    /// Whether Enter moves on in its boxes as Tab does.
    [[nodiscard]] virtual bool entersAsTab() const { return true; }

  protected:
    [[nodiscard]] QWidget& frame() { return *frame_; }
    [[nodiscard]] const RecordFields& fields() const { return fields_; }
    /// The buttons, made where they are first asked for: behind the fields, so that Tab reaches them last.
    [[nodiscard]] RecordBar& bar();
    [[nodiscard]] QVBoxLayout& rows() { return *rows_; }

    /// A list of the rows, above or below the frame: the caller places it.
    [[nodiscard]] TDBGrid* makeGrid(const QString& name);
    /// Takes the focus when an edit begins.
    void setFirstField(QWidget* field) { firstField_ = field; }

  private:
    [[nodiscard]] static QString tableOf(int tab);

    int tab_;
    DataSource* source_;
    QWidget* frame_;
    RecordFields fields_;
    RecordBar* bar_ = nullptr;
    QVBoxLayout* rows_;
    TDBGrid* grid_ = nullptr;
    QWidget* firstField_ = nullptr;
};

} // namespace pontrel
