#pragma once

#include "app/help/Manual.h"

#include <QPointer>
#include <QWidget>

#include <functional>

class QLabel;
class QLineEdit;
class QToolButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace pontrel {

class HelpText;

/// The manual in a window of its own: a table of contents, the chapter, a search through all chapters. There
/// is never more than one; it stays open beside the other windows and can be used while a dialog is open, and
/// closes with the main window. It reads nothing but what is compiled in, and follows no link that leads out
/// of the manual.
class HelpWindow : public QWidget {
    Q_OBJECT
  public:
    /// Sizes of the text, in percent.
    static constexpr int LeastZoom = 70;
    static constexpr int MostZoom = 300;

    /// Shows the place, in the window that is open or else in a new one, and gives it the keyboard.
    /// Closing it gives the keyboard back to the window that had it.
    static HelpWindow* open(const HelpPlace& place);
    /// The one that is open; null where none is.
    [[nodiscard]] static HelpWindow* current();

    void goTo(const HelpPlace& place);
    /// The chapter that is shown, and the heading above the place gone to last.
    [[nodiscard]] HelpPlace place() const;
    [[nodiscard]] int zoom() const { return zoom_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    /// A chapter that was shown, and how far it was scrolled.
    struct Visit {
        int chapter;
        int scrolled;
    };
    /// A place where the wanted text stands: a position in the chapter's shown text.
    struct Hit {
        int chapter;
        int position;
    };
    /// What a button looks and answers like.
    struct ButtonTexts {
        QString name;
        QString caption;
        QString tip; ///< The key is added.
        QList<QKeySequence> keys;
    };

    explicit HelpWindow(const Manual& manual);

    void makeControls();
    void fillTree();
    QToolButton* addButton(const ButtonTexts& texts, std::function<void()> routine);
    void addKey(const QList<QKeySequence>& keys, std::function<void()> routine);

    void followLink(const QUrl& link);
    void chooseEntry(const QTreeWidgetItem& item);
    void travel(int steps);
    void visit(int chapter);
    void showChapter(int chapter);
    void scrollTo(const HelpPlace& place);
    void showEntry(const HelpPlace& place);
    void setZoom(int percent);
    void standBeforeDialogs();
    void noteWhoAsked();

    void typedFind();
    void findNext(bool forward);
    void showHit(int hit);

    const Manual& manual_;
    QPointer<QWidget> asker_; ///< The window that had the keyboard before.
    QTreeWidget* tree_ = nullptr;
    HelpText* text_ = nullptr;
    QLineEdit* wanted_ = nullptr;
    QLabel* found_ = nullptr;
    QToolButton* back_ = nullptr;
    QToolButton* forward_ = nullptr;
    std::vector<Visit> visits_;
    int at_ = -1;    ///< The visit that is shown.
    int shown_ = -1; ///< The chapter whose text is laid out.
    std::vector<Hit> hits_;
    int hit_ = -1; ///< The one that is shown.
    int zoom_ = 100;
};

} // namespace pontrel
