#pragma once

#include "app/Lookup.h"
#include "app/RecordFields.h"

#include <QObject>
#include <QString>

#include <functional>
#include <optional>
#include <vector>

class QGridLayout;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace pontrel {

class DataSource;
struct FormState;
class Rows;

/// When a code that its table does not have is told.
enum class CodeCheck {
    Never,
    Leaving, ///< When another control of the window has taken the focus.
    Enter    ///< When Enter is pressed in the box.
};

/// What follows the message of an unknown code.
enum class CodeRefusal {
    MoveOn,        ///< Nothing.
    FocusBack,     ///< The focus goes back to the box, which nobody leaves with the code.
    FocusBackOnce, ///< The same, but whoever then goes on keeps the code.
    Lookup,        ///< The lookup opens, and its pick is written into the box.
    LookupAndFocus ///< The same, and the focus goes back to the box.
};

/// A code in the row of another one, whose name is shown as well: the title of an employee.
struct RelatedName {
    QString column; ///< Of the other code's table.
    LookupKind kind;
    QString label; ///< The object name of the label.
};

/// A code box as a row of its page's table. What stands behind a default may be left out.
struct CodeBoxRow {
    int number = 0;          ///< Its mark in the window, from 1 on. Boxes of one number share the mark.
    LookupKind kind{};       ///< Whose table has the codes.
    QString box;             ///< The object names of the box and its lookup's button.
    QString search;          //
    QString searchCaption{}; ///< Stands on the button in place of the picture.
    QString label{};         ///< That of the label which shows the name.
    QString caption{};       ///< Stands before the box.
    QString column{};        ///< That the box is bound to.
    QString spokenName;      ///< Of the box; the button's is made of it.
    int width = 0;           ///< Of the box, in pixels; 0 lets it stretch.
    int length = 0;          ///< The most characters that the user types; 0 takes as many as the column.
    CodeCheck check = CodeCheck::Never;
    CodeRefusal refusal = CodeRefusal::FocusBack;
    LookupKey afterSearch = LookupKey::None; ///< Sent to the box when the button's lookup has filled it.
    std::vector<RelatedName> related{};      ///< Each is shown only where it is found.
};

/// A box for a code with the button that looks it up and the label that shows its name. Each change of its
/// text, by whomever, looks the name up; an unknown code sets the box's mark in its window, which any later
/// change of a code box or date mask clears again. Empty text is an unknown code where somebody has emptied
/// the box by hand, and none where a routine has; nor does what a row brings leave a mark. Only a box whose
/// mark is set is told of when it is left or Enter pressed in it. Deliberate: an unknown code leaves the name
/// of the code before.
///
/// A box that neither is checked nor has a label or a routine of its own looks nothing up.
class CodeBox : public QObject {
    Q_OBJECT
  public:
    /// Makes the controls in the area of the fields. They belong to it, and this to the box.
    CodeBox(const RecordFields& fields, const CodeBoxRow& row);

    [[nodiscard]] QLineEdit& box() const { return *box_; }
    [[nodiscard]] QPushButton* search() const { return search_; }
    [[nodiscard]] QLabel* label() const { return label_; }
    [[nodiscard]] QLabel* caption() const { return caption_; } ///< Null without one, as label() is.
    [[nodiscard]] QString text() const;

    /// Puts the caption, if any, into that cell of a grid and the controls, beside each other, into the next.
    void addTo(QGridLayout& grid, int row, int column) const;

    /// The label of a related name; it stands nowhere until the page places it.
    [[nodiscard]] QLabel* relatedLabel(std::size_t related) const { return related_.at(related); }

    /// Reads these columns too of the code's row, "LeaveHD,LeaveUse", and hands the row over once its names
    /// are shown. Before connectTo().
    void onFound(const QString& columns, std::function<void(const Rows& row)> routine);
    /// What Enter does on a code that is not refused, in place of moving on. Before connectTo().
    void onEnter(std::function<void()> routine);

    /// Has the code looked up and checked from now on, over the shared connection; until then the button's
    /// lookup alone works. The window's state is to outlive this.
    void connectTo(FormState& form);

    void clearName();  ///< And the related ones.
    void clear();      ///< Empties box and name, without a mark.
    void forgetMark(); ///< What the box holds is not told of until it is changed.
    /// For a row that has become current: the name of its code, or none where that is empty or unknown.
    /// Throws RunTimeError.
    void showNameOfRow();

  private:
    [[nodiscard]] bool looksUp() const;
    [[nodiscard]] bool isEmptiedByRoutine() const;
    [[nodiscard]] bool isMarked() const;
    void changed();
    void showNames(const Rows& row);
    [[nodiscard]] bool entered();
    void left();
    void refuse();

    CodeBoxRow row_;
    const DataSource& source_;
    QLineEdit* box_;
    QPushButton* search_ = nullptr;
    QLabel* label_ = nullptr;
    QLabel* caption_ = nullptr;
    std::vector<QLabel*> related_;
    QString columns_; ///< Read for a code: of its name and the related ones, and what the page asks for.
    std::function<void(const Rows&)> found_;
    std::function<void()> onEnter_;
    FormState* form_ = nullptr;
};

/// The name of a code in the table of its kind; nothing where there is no such code. Reads the shared
/// connection; throws RunTimeError.
[[nodiscard]] std::optional<QString> nameOfCode(LookupKind kind, const QString& code);

} // namespace pontrel
