#pragma once

#include "app/controls/TDBGrid.h"

#include <QWidget>

class QPushButton;

namespace pontrel {

class DataSource;

/// The names that the attendance window's lists show in place of codes.
struct AttendanceNames {
    TranslationList employees;
    TranslationList leaves;
    TranslationList reasons;

    /// Reads them all as they are now. Throws RunTimeError.
    void read();
};

/// One tab of the attendance window: a list over the source Data1(t) and its table. The names are the
/// window's and outlive it.
class AttendancePage : public QWidget {
    Q_OBJECT
  public:
    AttendancePage(int tab, const QString& table, AttendanceNames& names);

    [[nodiscard]] DataSource& source() const { return *source_; }

    /// Shows the whole table from its first row on, with the names as they are now. Throws RunTimeError.
    void bind();
    /// Runs the source as it is, with the names as they are now. Throws RunTimeError.
    void run();
    /// Another row of the source has become current while this page is in front.
    virtual void followRow() {}

  Q_SIGNALS:
    void jump(int module, int tab); ///< A button leads to a tab of another window, or with -1 to none.
    void leave();

  protected:
    /// Runs the source with this selection and stands on its first row. Throws RunTimeError.
    void show(const QString& selection);
    /// What follows a row, when the source has been run and stands on its first row.
    virtual void bindFollowers() {}
    /// Whether the source is being run: rows that follow a row are not read for each move then.
    [[nodiscard]] bool isRunning() const { return running_; }

    [[nodiscard]] AttendanceNames& names() const { return names_; }
    [[nodiscard]] TDBGrid* makeGrid(const QString& name, const QString& spokenName,
                                    std::vector<GridColumn> columns, DataSource& source);
    [[nodiscard]] QPushButton* makeButton(const QString& name, const QString& caption);
    /// The columns of a list of punches.
    [[nodiscard]] std::vector<GridColumn> punchColumns() const;

    static constexpr int Margin = 4; ///< Around the page and between its parts, in pixels.

  private:
    void runAndStandFirst();

    QString table_;
    AttendanceNames& names_;
    DataSource* source_;
    bool running_ = false;
};

} // namespace pontrel
