#pragma once

#include <QString>
#include <QStringList>

namespace pontrel {

/// What can be looked up; each kind is named after its dialog.
enum class LookupKind {
    QFrmHoliNo,
    QFrmTimeNo,
    QFrmUnitNo,
    QFrmClsNo,
    QFrmTitleNo,
    QFrmWorkNo,
    QFrmSuitNo,
    QFrmCnlNo,
    QFrmEmpNO
};

/// In what the lookups differ.
struct LookupTexts {
    QString name; ///< Of the dialog, as its object name.
    QString title;
    QString table;
    QString codeColumn;
    QString nameColumn;
    QString codeWord;        ///< What a message calls such a code.
    QStringList gridColumns; ///< The first is not the code column everywhere.
    QStringList gridCaptions;
    QString codeCaption;
    QString nameCaption;
    QString* result;             ///< The shared value that takes the code.
    bool hasSearchBoxes = false; ///< Two boxes above the grid jump to the start of a code or name.
};

[[nodiscard]] const LookupTexts& lookupTexts(LookupKind kind);

} // namespace pontrel
