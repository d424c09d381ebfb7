#pragma once

#include "app/ProgressBox.h"
#include "app/Prompts.h"
#include "paper/ReportDocument.h"

#include <QWidget>

class QAction;
class QComboBox;
class QFrame;
class QLabel;
class QLineEdit;
class QPrinter;
class QSplitter;
class QToolBar;
class QToolButton;
class QTreeWidget;

namespace pontrel {

class PageView;
class ReportSearch;

/// What a preview offers besides looking.
struct PreviewOffers {
    bool print = false;
    bool save = false; ///< As PDF, spreadsheet or comma-separated text.
};

/// A report on screen, in a window of its own that stays open beside the others and ends with the main
/// window. It needs nothing of the store any more.
class ReportPreview : public QWidget {
    Q_OBJECT
  public:
    ReportPreview(std::shared_ptr<const paper::ReportDocument> document, PreviewOffers offers);

    /// Shows a report; the window goes when it is closed.
    static ReportPreview* open(std::shared_ptr<const paper::ReportDocument> document, PreviewOffers offers,
                               bool maximised);

    [[nodiscard]] const paper::ReportDocument& document() const { return *document_; }
    [[nodiscard]] PageView& pages() const { return *pages_; }

  private:
    /// What a control of the toolbar looks and answers like.
    struct ActionTexts {
        QString name;
        QString caption;
        QString tip; ///< The key is added.
        QList<QKeySequence> keys;
    };
    /// Saves the document, and tells whether it was not stopped.
    using Save = std::function<bool(const paper::ReportDocument&, const QString&, const ProgressStep&)>;

    void makeToolbar(PreviewOffers offers);
    void makePageControls();
    void makeZoomControls();
    void makeFindBar();
    void makeTree();
    void layOut();
    void connectControls();
    QAction* addAction(const ActionTexts& texts, std::function<void()> routine);
    void addTool(QWidget* control);
    void addGap();
    QToolButton* findButton(const ActionTexts& texts, const std::function<void()>& routine);

    void print();
    void printFile(const std::vector<int>& pages, const QString& path);
    void printPaper(const std::vector<int>& pages, QPrinter& printer);
    void savePdf();
    void saveSheet();
    void saveCsv();
    void saveAs(const SaveKind& kind, const QString& caption, const Save& save);
    void copyPage();
    void leave();

    void typedPage();
    void showPage();
    void showZoom();
    void chosenZoom(int index);

    void openFind();
    void closeFind();
    void typedFind();
    void findNext(bool forward);
    void showFound();

    void showTree(bool shown);
    void fillTree();
    void chooseGroup(); ///< The first one that begins on the page, else the one that goes on there.
    void goToGroup();

    std::shared_ptr<const paper::ReportDocument> document_;
    PageView* pages_;
    ReportSearch* search_;
    QToolBar* tools_ = nullptr;
    QAction* first_ = nullptr;
    QAction* previous_ = nullptr;
    QAction* next_ = nullptr;
    QAction* last_ = nullptr;
    QAction* tree_ = nullptr;
    QLineEdit* page_ = nullptr;
    QComboBox* zoom_ = nullptr;
    QSplitter* split_ = nullptr;
    QTreeWidget* groups_ = nullptr;
    QFrame* findBar_ = nullptr;
    QLineEdit* wanted_ = nullptr;
    QLabel* found_ = nullptr;
    QLabel* status_ = nullptr;
    int hit_ = -1;           ///< The place gone to, of those found.
    int foundFrom_ = 0;      ///< The page on which the search began.
    bool isHitOpen_ = false; ///< The first place behind it has not been found yet.
};

} // namespace pontrel
