#pragma once

#include <QWidget>

#include <map>
#include <set>

class QPushButton;

namespace pontrel {

/// What a button of a record page does.
enum class BarAction {
    Add,
    Edit,
    Delete,
    Cancel,
    Save,
    Query,
    First,
    Previous,
    Next,
    Last,
    Refresh,
    Print,
    Leave,
    Back ///< To the exceptions of the attendance window.
};

/// Which action stands behind which index of a bar.
using BarMap = std::map<int, BarAction>;

/// The bar of a whole record page: 0 "新增資料" to 12 "離開".
[[nodiscard]] BarMap wholeBar();
/// The same with 13, the picture that leads back to the exceptions.
[[nodiscard]] BarMap wholeBarWithBack();

/// The buttons of a record page, an array of controls such as "CtrlCmd0(3)". Each is as wide as its caption
/// needs; those that do not fit beside each other take a second row. Tab comes to "存檔" ahead of "取消".
/// Those for which there is an ActionKey have it. A button that leads to a window which the program does not
/// have stays disabled.
class RecordBar : public QWidget {
    Q_OBJECT
  public:
    /// The array's name and its actions. The width is that of the place where the bar will stand, in pixels.
    RecordBar(const QString& array, const BarMap& actions, int width, QWidget* parent);

    /// A button behind the others that no state of the bar touches; the caller connects it.
    QPushButton* addButton(int index, const QString& caption);

    /// The button of that index; null where the bar has none.
    [[nodiscard]] QPushButton* button(int index) const;
    [[nodiscard]] QPushButton* button(BarAction action) const;

    /// Switches on the buttons of these actions and all others off, but for those that are left alone.
    void setStates(const std::set<BarAction>& on, const std::set<BarAction>& leftAlone);

  Q_SIGNALS:
    void pressed(BarAction action);

  private:
    QPushButton* makeButton(int index, const QString& caption, const QString& accessibleName);
    void layOut();

    QString array_;
    BarMap actions_;
    int width_;
    std::map<int, QPushButton*> buttons_;
};

} // namespace pontrel
