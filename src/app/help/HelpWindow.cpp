#include "app/help/HelpWindow.h"

#include "app/Events.h"
#include "app/MDI.h"
#include "app/Module1.h"
#include "app/Prompts.h"
#include "app/Zoom.h"
#include "app/help/HelpText.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QToolButton>
#include <QTreeWidget>
#include <QWindow>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize FirstSize(940, 640);
constexpr int ChapterRole = Qt::UserRole;
constexpr int HeadingRole = Qt::UserRole + 1;

QPointer<HelpWindow>& openHelp() {
    static QPointer<HelpWindow> window;
    return window;
}

} // namespace

HelpWindow* HelpWindow::current() {
    return openHelp();
}

HelpWindow* HelpWindow::open(const HelpPlace& place) {
    if (!openHelp()) {
        openHelp() = new HelpWindow(Manual::ofProgram());
        if (gMDI)
            gMDI->takeAlong(*openHelp());
    }
    HelpWindow* window = openHelp();
    window->noteWhoAsked();
    window->standBeforeDialogs();
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->show();
    window->raise();
    window->activateWindow();
    window->goTo(place);
    window->text_->setFocus();
    return window;
}

HelpWindow::HelpWindow(const Manual& manual) : QWidget(nullptr, Qt::Window), manual_(manual) {
    setObjectName(u"HelpWindow"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(u"使用說明"_s);
    setAccessibleName(u"使用說明"_s);
    makeControls();
    resize(FirstSize);
    zoom::keepOnScreen(*this);
    fillTree();
    create();
    windowHandle()->installEventFilter(this);
}

bool HelpWindow::eventFilter(QObject* watched, QEvent* event) {
    // A dialog that opens later shuts this window out as well, unless it is made the dialog's own.
    if (watched == windowHandle() && event->type() == QEvent::WindowBlocked)
        QMetaObject::invokeMethod(
            this, [this] { standBeforeDialogs(); }, Qt::QueuedConnection);
    return QWidget::eventFilter(watched, event);
}

void HelpWindow::closeEvent(QCloseEvent* event) {
    if (openHelp() == this)
        openHelp() = nullptr; // the object goes later, and F1 may come before
    // Window managers do this themselves; where there is none, the keyboard would be lost.
    if (isActiveWindow() && asker_ && asker_->isVisible())
        asker_->activateWindow();
    QWidget::closeEvent(event);
}

void HelpWindow::noteWhoAsked() {
    if (QWidget* active = QApplication::activeWindow(); active && active != this)
        asker_ = active;
}

/// A modal dialog lets its own windows alone have the keyboard and the mouse.
void HelpWindow::standBeforeDialogs() {
    QWidget* dialog = QApplication::activeModalWidget();
    QWindow* before = dialog ? dialog->windowHandle() : nullptr;
    if (windowHandle()->transientParent() != before)
        windowHandle()->setTransientParent(before);
}

void HelpWindow::goTo(const HelpPlace& place) {
    const int chapter = manual_.find(place.chapter);
    if (chapter < 0)
        return;
    visit(chapter);
    scrollTo(place);
    showEntry(place);
}

HelpPlace HelpWindow::place() const {
    const auto& chapter =
        manual_.chapters().at(static_cast<std::size_t>(visits_.at(static_cast<std::size_t>(at_)).chapter));
    const QString heading = text_->headingOfCursor();
    return {chapter.name, heading == chapter.title ? QString() : heading};
}

/// Makes the chapter the newest visit; those that lay ahead are forgotten.
void HelpWindow::visit(int chapter) {
    if (at_ >= 0)
        visits_[static_cast<std::size_t>(at_)].scrolled = text_->verticalScrollBar()->value();
    visits_.resize(static_cast<std::size_t>(at_ + 1));
    visits_.push_back({chapter, 0});
    ++at_;
    showChapter(chapter);
}

void HelpWindow::travel(int steps) {
    const int wanted = at_ + steps;
    if (wanted < 0 || wanted >= static_cast<int>(visits_.size()))
        return;
    visits_[static_cast<std::size_t>(at_)].scrolled = text_->verticalScrollBar()->value();
    at_ = wanted;
    const Visit& there = visits_[static_cast<std::size_t>(at_)];
    showChapter(there.chapter);
    text_->scrollBackTo(there.scrolled);
    showEntry(place());
}

void HelpWindow::showChapter(int chapter) {
    const auto& shown = manual_.chapters().at(static_cast<std::size_t>(chapter));
    if (shown_ != chapter)
        text_->showChapter(shown.markdown);
    shown_ = chapter;
    setWindowTitle(shown.title + u" - 使用說明"_s);
    back_->setEnabled(at_ > 0);
    forward_->setEnabled(at_ + 1 < static_cast<int>(visits_.size()));
}

void HelpWindow::scrollTo(const HelpPlace& place) {
    int position = place.heading.isEmpty() ? 0 : std::max(0, text_->positionOf(place.heading));
    if (!place.text.isEmpty()) {
        const QTextCursor found = text_->document()->find(place.text, position);
        if (!found.isNull()) {
            text_->bringToTop(found.selectionStart());
            text_->setTextCursor(found);
            return;
        }
    }
    text_->bringToTop(position);
}

void HelpWindow::followLink(const QUrl& link) {
    if (!link.isRelative())
        return;
    const QString heading = link.fragment(QUrl::FullyDecoded);
    const QString chapter = link.path().isEmpty() ? place().chapter : link.path();
    goTo({chapter, heading});
}

void HelpWindow::setZoom(int percent) {
    const int top = text_->positionAtTop();
    zoom_ = std::clamp(percent, LeastZoom, MostZoom);
    QFont font = QApplication::font();
    font.setPixelSize(font.pixelSize() * zoom_ / 100);
    text_->setFont(font);
    text_->bringToTop(top);
}

void HelpWindow::typedFind() {
    hits_.clear();
    hit_ = -1;
    const QString wanted = wanted_->text();
    found_->clear();
    if (wanted.isEmpty())
        return;
    const auto chapters = static_cast<int>(manual_.chapters().size());
    for (int chapter = 0; chapter < chapters; ++chapter) {
        const QString& text = manual_.shownText(chapter);
        for (qsizetype at = text.indexOf(wanted, 0, Qt::CaseInsensitive); at >= 0;
             at = text.indexOf(wanted, at + wanted.size(), Qt::CaseInsensitive))
            hits_.push_back({chapter, static_cast<int>(at)});
    }
    if (hits_.empty()) {
        found_->setText(u"找不到"_s);
        return;
    }
    // The first one from what is in sight, so that what is typed on stays on its place.
    const Hit here{visits_.at(static_cast<std::size_t>(at_)).chapter, text_->positionAtTop()};
    const auto next = std::find_if(hits_.begin(), hits_.end(), [&here](const Hit& hit) {
        return hit.chapter > here.chapter || (hit.chapter == here.chapter && hit.position >= here.position);
    });
    showHit(next == hits_.end() ? 0 : static_cast<int>(next - hits_.begin()));
}

void HelpWindow::findNext(bool forward) {
    if (hits_.empty()) {
        if (wanted_->text().isEmpty())
            wanted_->setFocus(Qt::ShortcutFocusReason);
        else
            beep();
        return;
    }
    const auto count = static_cast<int>(hits_.size());
    showHit((hit_ + (forward ? 1 : -1) + count) % count);
}

void HelpWindow::showHit(int hit) {
    hit_ = hit;
    const Hit& place = hits_.at(static_cast<std::size_t>(hit));
    if (visits_.at(static_cast<std::size_t>(at_)).chapter != place.chapter)
        visit(place.chapter);
    QTextCursor cursor(text_->document());
    cursor.setPosition(place.position);
    const QRect line = text_->cursorRect(cursor);
    if (!text_->viewport()->rect().contains(line))
        text_->bringToTop(place.position);
    cursor.setPosition(place.position + static_cast<int>(wanted_->text().size()), QTextCursor::KeepAnchor);
    text_->setTextCursor(cursor);
    found_->setText(u"第 %L1 處，共 %L2 處"_s.arg(hit + 1).arg(hits_.size()));
    showEntry(this->place());
}

/// Marks the entry of the table of contents, without going there.
void HelpWindow::showEntry(const HelpPlace& place) {
    const QSignalBlocker blocker(tree_);
    QTreeWidgetItem* chosen = nullptr;
    for (QTreeWidgetItemIterator item(tree_); *item; ++item) {
        if ((*item)->data(0, ChapterRole).toString() != place.chapter)
            continue;
        const QString heading = (*item)->data(0, HeadingRole).toString();
        if (heading.isEmpty() || heading == place.heading)
            chosen = *item;
    }
    if (!chosen)
        return;
    tree_->setCurrentItem(chosen);
    if (!chosen->parent())
        chosen->setExpanded(true);
    tree_->scrollToItem(chosen);
}

void HelpWindow::chooseEntry(const QTreeWidgetItem& item) {
    goTo({item.data(0, ChapterRole).toString(), item.data(0, HeadingRole).toString()});
}

void HelpWindow::fillTree() {
    constexpr int DeepestLevel = 3;
    for (const Manual::Chapter& chapter : manual_.chapters()) {
        std::vector<QTreeWidgetItem*> above; // the open entry of each level
        for (const Manual::Heading& heading : chapter.headings) {
            if (heading.level > DeepestLevel)
                continue;
            auto* item = new QTreeWidgetItem({heading.text});
            item->setToolTip(0, heading.text);
            item->setData(0, ChapterRole, chapter.name);
            item->setData(0, HeadingRole, above.empty() ? QString() : heading.text);
            above.resize(std::min(above.size(), static_cast<std::size_t>(heading.level - 1)));
            if (above.empty())
                tree_->addTopLevelItem(item);
            else
                above.back()->addChild(item);
            above.push_back(item);
        }
    }
}

} // namespace pontrel
