#include "app/Prompts.h"

#include "app/InputGate.h"
#include "app/Zoom.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QToolButton>

#include <utility>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

bool hourglassShown = false;
QPointer<QWidget> promptsOver;

std::function<void()>& replacedBell() {
    static std::function<void()> bell;
    return bell;
}

QMessageBox::Icon pictureOf(MsgIcon icon) {
    switch (icon) {
    case MsgIcon::None:
        return QMessageBox::NoIcon;
    case MsgIcon::Information:
        return QMessageBox::Information;
    case MsgIcon::Question:
        return QMessageBox::Question;
    case MsgIcon::Exclamation:
        return QMessageBox::Warning;
    case MsgIcon::Critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

/// Names the buttons of a box of Qt's, whose captions are Qt's own.
void nameButtons(const QDialog& box) {
    const auto* buttons = box.findChild<QDialogButtonBox*>();
    if (!buttons)
        return;
    const std::pair<QDialogButtonBox::StandardButton, QString> names[] = {
        {QDialogButtonBox::Ok, u"Ok"_s},
        {QDialogButtonBox::Cancel, u"Cancel"_s},
        {QDialogButtonBox::Yes, u"Yes"_s},
        {QDialogButtonBox::No, u"No"_s}};
    for (const auto& [standard, name] : names) {
        if (QPushButton* button = buttons->button(standard)) {
            button->setObjectName(name);
            const QString caption = button->text();
            button->setAccessibleName(caption.section(u"(&"_s, 0, 0).remove(u'&'));
        }
    }
}

/// Takes everything from the file dialog but choosing: what stands in the folder is the only original.
void onlyChoose(QFileDialog& dialog) {
    dialog.setOption(QFileDialog::ReadOnly);
    const auto lists = dialog.findChildren<QAbstractItemView*>();
    for (QAbstractItemView* list : lists) {
        // Its menu offers nothing that is of use here, and a file dragged out of it could be moved away.
        list->setContextMenuPolicy(Qt::NoContextMenu);
        list->setDragDropMode(QAbstractItemView::NoDragDrop);
        list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    }
    if (auto* newFolder = dialog.findChild<QToolButton*>(u"newFolderButton"_s))
        newFolder->hide();
}

/// Files by the day in their names, where they are named after one as the reader's are, else by when they
/// were changed: the newest first, behind the folders. Any other column of the dialog sorts as ever.
class NewestFirst : public QSortFilterProxyModel {
  public:
    using QSortFilterProxyModel::QSortFilterProxyModel;

  protected:
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override {
        const auto* files = static_cast<const QFileSystemModel*>(sourceModel());
        if (left.column() != 0)
            return QSortFilterProxyModel::lessThan(left, right);
        const QFileInfo one = files->fileInfo(left);
        const QFileInfo other = files->fileInfo(right);
        if (one.isDir() != other.isDir())
            return one.isDir();
        const QDateTime first = timeOf(one);
        const QDateTime second = timeOf(other);
        return !one.isDir() && first != second ? first > second : one.fileName() < other.fileName();
    }

  private:
    static QDateTime timeOf(const QFileInfo& file) {
        const QDate day = QDate::fromString(file.completeBaseName(), u"yyyyMMdd"_s);
        return day.isValid() ? day.startOfDay() : file.lastModified();
    }
};

/// The folder, or the nearest one above it that is there.
QString nearestFolder(const QString& folder) {
    QString path = QDir::cleanPath(folder);
    while (!QFileInfo(path).isDir())
        path = QFileInfo(path).path(); // of the last one itself, which is always there
    return path;
}

/// Qt's own dialog for files, so that it looks and answers alike on every desktop.
class FileDialog : public QFileDialog {
  public:
    FileDialog(const QString& title, const QString& folder, const QString& filter)
        : QFileDialog(promptParent(), title, nearestFolder(folder), filter) {
        setObjectName(u"CommonDialog1"_s);
        setAccessibleName(title);
        setOption(QFileDialog::DontUseNativeDialog);
        // Names alone: the name says the day, and the columns of the detailed view would not fit.
        setViewMode(QFileDialog::List);
    }
};

} // namespace

QWidget* promptParent() {
    if (QWidget* modal = QApplication::activeModalWidget())
        return modal;
    if (promptsOver)
        return promptsOver;
    if (QWidget* active = QApplication::activeWindow())
        return active;
    const auto windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->isVisible() && window->windowType() != Qt::Popup && window->windowType() != Qt::ToolTip)
            return window;
    }
    return nullptr;
}

PromptsOver::PromptsOver(QWidget& window) : before_(std::exchange(promptsOver, &window)) {}

PromptsOver::~PromptsOver() {
    promptsOver = before_;
}

int runModal(QDialog& dialog) {
    const QPointer<QWidget> beneath = dialog.parentWidget() ? dialog.parentWidget()->window() : nullptr;
    const InputGate::Dialog shown(dialog);
    zoom::keepOnScreen(dialog);
    const int result = dialog.exec();
    // Window managers do this themselves; where there is none, the keyboard would be lost.
    if (beneath && beneath->isVisible())
        beneath->activateWindow();
    return result;
}

MsgAnswer MsgBox(const QString& text, const QString& title, MsgIcon icon, MsgButtons buttons) {
    QMessageBox box(promptParent());
    box.setObjectName(u"MsgBox"_s);
    box.setWindowTitle(title);
    box.setAccessibleName(title);
    box.setTextFormat(Qt::PlainText);
    box.setText(text);
    box.setIcon(pictureOf(icon));
    if (buttons == MsgButtons::Ok) {
        box.setStandardButtons(QMessageBox::Ok);
        box.setDefaultButton(QMessageBox::Ok);
        box.setEscapeButton(QMessageBox::Ok);
    } else {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(buttons == MsgButtons::YesNo ? QMessageBox::Yes : QMessageBox::No);
        box.setEscapeButton(QMessageBox::No);
    }
    nameButtons(box);
    (void)runModal(box);
    if (buttons == MsgButtons::Ok)
        return MsgAnswer::Ok;
    return box.standardButton(box.clickedButton()) == QMessageBox::Yes ? MsgAnswer::Yes : MsgAnswer::No;
}

std::optional<QString> chooseFile(const QString& folder, const QString& filter) {
    FileDialog dialog(u"開啟"_s, folder, filter);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setProxyModel(new NewestFirst(&dialog));
    onlyChoose(dialog);
    if (runModal(dialog) != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return std::nullopt;
    return dialog.selectedFiles().constFirst();
}

std::optional<QString> chooseSaveFile(const QString& proposal, const SaveKind& kind) {
    QString path = proposal;
    while (true) {
        FileDialog dialog(u"另存新檔"_s, QFileInfo(path).path(), kind.filter);
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setFileMode(QFileDialog::AnyFile);
        dialog.setDefaultSuffix(kind.ending);
        dialog.setOption(
            QFileDialog::DontConfirmOverwrite); // the question below is in the program's own words
        dialog.selectFile(QFileInfo(path).fileName());
        if (runModal(dialog) != QDialog::Accepted || dialog.selectedFiles().isEmpty())
            return std::nullopt;
        path = dialog.selectedFiles().constFirst();
        const QString question = u"檔案「%1」已經存在，要取代它嗎？"_s.arg(QFileInfo(path).fileName());
        if (!QFileInfo::exists(path) ||
            MsgBox(question, u"另存新檔"_s, MsgIcon::Question, MsgButtons::YesNoDefaultNo) == MsgAnswer::Yes)
            return path;
    }
}

std::optional<QString> inputBox(const QString& prompt, const QString& title) {
    QInputDialog dialog(promptParent());
    dialog.setObjectName(u"InputBox"_s);
    dialog.setInputMode(QInputDialog::TextInput);
    dialog.setWindowTitle(title);
    dialog.setLabelText(prompt);
    dialog.setAccessibleName(title);
    if (auto* edit = dialog.findChild<QLineEdit*>()) {
        edit->setObjectName(u"InputText"_s);
        edit->setAccessibleName(prompt);
    }
    (void)dialog.okButtonText(); // before it is asked for them, the dialog has no buttons
    nameButtons(dialog);
    if (runModal(dialog) != QDialog::Accepted)
        return std::nullopt;
    return dialog.textValue();
}

void setHourglass(bool on) {
    if (on == hourglassShown)
        return;
    hourglassShown = on;
    if (on)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

bool hourglass() {
    return hourglassShown;
}

void beep() {
    if (replacedBell())
        replacedBell()();
    else
        QApplication::beep();
}

void setBell(std::function<void()> bell) {
    replacedBell() = std::move(bell);
}

} // namespace pontrel
