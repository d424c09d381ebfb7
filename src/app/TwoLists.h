#pragma once

#include "app/controls/HintedList.h"

#include <QWidget>

#include <array>

class QLabel;
class QLayout;
class QPushButton;

namespace pontrel {

/// A list of which entries are taken: by a double click on one, or by Enter.
class EntryList : public HintedList {
    Q_OBJECT
  public:
    explicit EntryList(QWidget* parent);

  Q_SIGNALS:
    void entryDoubleClicked(); ///< The entry is selected.
    void enterPressed();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

  private:
    bool doubleClicked_ = false; ///< The mouse button is down for the second time.
};

/// Two lists between which entries are moved: "List1" of those that remain, "List2" of those chosen, the
/// buttons "CMDCTRL(0)" to "CMDCTRL(3)" between them, and the number of entries of each. Entries that are
/// moved go to the other list's end, several in the order in which they stood, and after a move nothing is
/// selected. A double click moves an entry of either list, Enter one of List1.
class TwoLists : public QWidget {
    Q_OBJECT
  public:
    explicit TwoLists(QWidget* parent = nullptr);

    /// Whether Enter in List1 selects the first entry that is left, so that the next Enter moves that. Not at
    /// first.
    void setEnterSelectsFirst(bool selects) { enterSelectsFirst_ = selects; }

    /// What to do first, shown in List1 while there is no entry in either list. Empty at first.
    void setEmptyText(const QString& text);

    void clear(); ///< Empties both lists.
    /// Empties both lists and puts the entries into List1, in their order.
    void setEntries(const QStringList& entries);

    [[nodiscard]] QStringList remaining() const; ///< The entries of List1, from first to last.
    [[nodiscard]] QStringList chosen() const;    ///< The entries of List2, from first to last.
    [[nodiscard]] QListWidget* list1() const { return List1; }
    [[nodiscard]] QListWidget* list2() const { return List2; }

  private:
    EntryList* makeList(const QString& name, const QString& spokenName);
    [[nodiscard]] QLayout* makeButtons();
    [[nodiscard]] QLayout* makeCount(const QString& captionName, const QString& caption, int index);
    void CMDCTRL_Click(int index);
    void List1_Enter();
    /// False where nothing is selected.
    bool moveSelected(EntryList& from, EntryList& to);
    void moveAll(EntryList& from, EntryList& to);
    void endMove();
    void showCounts();

    EntryList* List1;
    EntryList* List2;
    std::array<QPushButton*, 4> CMDCTRL{};
    std::array<QLabel*, 2> Label3{};
    bool enterSelectsFirst_ = false;
    QString emptyText_;
};

} // namespace pontrel
