#pragma once

#include "app/LookupKinds.h"

#include <QDialog>

#include <array>

class QLabel;
class QLineEdit;
class QPushButton;

namespace pontrel {

class DataSource;
class TDBGrid;

/// A modal dialog that lists the codes of one table and hands the chosen one to the shared value of its kind.
class Lookup : public QDialog {
    Q_OBJECT
  public:
    /// Shows the dialog of that kind. Only its button "確定" sets the shared value, to the code of the
    /// current row, or to an empty text where there is none; Enter or a double click on a row is the same.
    /// Any other end leaves the value as it was. Throws RunTimeError where the store cannot be opened.
    static void ask(LookupKind kind, QWidget* parent);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    Lookup(LookupKind kind, QWidget* parent);

    void makeControls();
    void makeSearchBoxes();
    void makeGrid();
    void layOut();
    void connectControls();

    void Load();
    void Command1_Click(int index);
    void Text1_Change();
    void Text2_Change();
    void Text1_LostFocus();
    void Text2_LostFocus();

    const LookupTexts& texts_;
    DataSource* Data1;
    TDBGrid* TDBGrid2 = nullptr;
    QLineEdit* Text1 = nullptr; ///< Both are null where the kind has none.
    QLineEdit* Text2 = nullptr;
    QLabel* Label1 = nullptr;
    QLabel* Label2 = nullptr;
    QLabel* Label3 = nullptr;
    QLabel* Label4 = nullptr;
    std::array<QPushButton*, 2> Command1{};
};

/// The button beside a code field that opens its lookup, with a magnifier for a picture.
[[nodiscard]] QPushButton* makeSearchButton(QWidget* page, const QString& name,
                                            const QString& accessibleName);

/// The key that a field is sent after a lookup has filled it.
enum class LookupKey { None, Enter, Tab };

/// What a search button does: shows the lookup, sets the field's text to the shared value, also where the
/// lookup was cancelled, and where a key is given, puts the focus on the field and sends it the key. Throws
/// RunTimeError.
void searchCode(LookupKind kind, QLineEdit& field, LookupKey key = LookupKey::None);

} // namespace pontrel
