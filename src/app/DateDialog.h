#pragma once

#include "app/DatePair.h"

#include <QDate>
#include <QDialog>

#include <vector>

class QHBoxLayout;
class QLabel;

namespace pontrel {

class FocusWatch;
class TDBMask;

/// What the modal dialogs that ask for dates share: a row of captions and date pairs, which open on today,
/// and below it the buttons "確定" and "取消".
class DateDialog : public QDialog {
    Q_OBJECT
  protected:
    DateDialog(const QString& name, const QString& title, QWidget* parent);

    /// Adds a caption to the row, "Label1" being the first.
    QLabel* addCaption(const QString& caption);

    /// Adds a date pair to the row, TDBMask1(0) and TDBDate1(0) being the first.
    void addPair(const QString& spokenName);

    /// To be called when all captions and pairs are there.
    void finish();

    [[nodiscard]] TDBMask& mask(int index) const { return *pairs_.at(static_cast<std::size_t>(index)).mask; }
    void setDate(int index, QDate date);
    /// The date control's date, which counts whatever the mask shows.
    [[nodiscard]] QDate date(int index) const;

  private:
    FocusWatch* watch_;
    QHBoxLayout* fields_;
    bool updating_ = false;
    int badDateMark_ = 0;
    int captions_ = 0;
    std::vector<DateFields> pairs_;
};

} // namespace pontrel
