#pragma once

#include "rules/reports/Selection.h"

#include <QDate>
#include <QMap>
#include <QObject>
#include <QString>

#include <array>

namespace pontrel {

/// The report control. Its properties say what is printed; running it reads the records once through a
/// connection of its own, which sees what has been committed, and shows a preview that then needs neither the
/// control nor the store.
class Cr1 : public QObject {
    Q_OBJECT
  public:
    explicit Cr1(QObject* parent = nullptr);

    QString reportFileName;            ///< Path of the template.
    SelectionFormula selectionFormula; ///< Stays from run to run; empty selects every record.
    std::array<QDate, 2> period{}; ///< What was asked for; the report tells it where the formula does not.
    bool showPrint = false;        ///< Whether the preview offers to print.
    bool showExport = false;       ///< Whether it offers to save PDF, CSV or spreadsheet.
    int destination = 0;           ///< 0: a window. Nothing else is used.
    int windowState = 0;           ///< 2: maximised.

    void setDataFile(const QString& path) { dataFile_ = path; }
    /// A named value: "Title='...'", the text between the first and the last apostrophe. It stays from run to
    /// run in its place until another takes it; a report takes no notice of a name that it does not know.
    void setFormula(int index, const QString& text) { formulas_.insert(index, text); }

    /// 1 runs the report; other values do nothing. Throws RunTimeError: no such template, a faulty one, a
    /// formula that cannot be read, a store that cannot be read.
    void setAction(int action);

  private:
    QString dataFile_;
    QMap<int, QString> formulas_;
};

} // namespace pontrel
