#include "windows/attendance/DayJudgement.h"

#include "app/ControlNames.h"
#include "app/Events.h"
#include "app/Printers.h"
#include "app/Prompts.h"
#include "app/SaveFile.h"
#include "app/Window.h"
#include "app/controls/Buttons.h"
#include "app/controls/LongTexts.h"
#include "rules/Session.h"
#include "rules/attendance/DaySentences.h"
#include "windows/attendance/DayPage.h"
#include "windows/attendance/DayPicture.h"
#include "windows/attendance/MonthStrip.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QShortcut>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize UsualSize(780, 560);
constexpr int Margin = 8;

QString legendText() {
    QString text;
    for (int state = 0; state < DayStateCount; ++state) {
        if (state > 0)
            text += u'　';
        text += stateSign(static_cast<DayState>(state)) + u' ' + stateName(static_cast<DayState>(state));
    }
    return text;
}

} // namespace

void DayJudgement::ask(QWidget* parent, const QString& EmpNo, QDate date, const QString& TimeNo,
                       DayList list) {
    std::optional<DayAccount> account;
    if (!trapRead([&] { account = explainDay(storePath(), EmpNo, date, TimeNo, list); }))
        return;
    DayJudgement dialog(parent, std::move(*account));
    (void)runModal(dialog);
}

DayJudgement::DayJudgement(QWidget* parent, DayAccount account)
    : QDialog(parent)
    , account_(std::move(account))
    , chosenDay_(account_.date)
    , chosenTimeNo_(account_.TimeNo) {
    setObjectName(u"DayJudgement"_s);
    setWindowTitle(u"當日判讀"_s);
    setAccessibleName(u"當日判讀"_s);
    makeControls();
    showAccount();
    resize(UsualSize);
    month_->focusDay();
}

void DayJudgement::makeControls() {
    title_ = new LongLabel(this);
    title_->setObjectName(u"DayTitle"_s);
    picture_ = new DayPicture(this);
    auto* legend = new QLabel(marksLegend(), this);
    legend->setObjectName(u"DayLegend"_s);
    sentences_ = new QPlainTextEdit(this);
    sentences_->setObjectName(u"DaySentences"_s);
    sentences_->setAccessibleName(u"判讀說明"_s);
    sentences_->setReadOnly(true);
    sentences_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    sentences_->setTabChangesFocus(true);
    month_ = new MonthStrip(this);
    onEvent(month_, &MonthStrip::dayChosen, this, [this](const QDate& day) { goTo(day); });
    auto* states = new QLabel(legendText(), this);
    states->setObjectName(u"StateLegend"_s);
    auto* middle = new QHBoxLayout;
    middle->setSpacing(Margin);
    middle->addWidget(sentences_, 1);
    middle->addWidget(month_);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(Margin, Margin, Margin, Margin);
    rows->setSpacing(Margin / 2 - 1); // there are screens on which each pixel counts
    rows->addWidget(title_);
    rows->addWidget(picture_);
    rows->addWidget(legend);
    rows->addLayout(middle, 1);
    rows->addWidget(states, 0, Qt::AlignRight);
    rows->addLayout(makeButtons());
}

void DayJudgement::makeOtherRowButton() {
    other_ = makeButton(this, u"CmdOtherRow"_s, {});
    other_->setAutoDefault(false);
    other_->setToolTip(u"當日另一個時段的記錄"_s);
    onEvent(other_, &QPushButton::clicked, this, [this] {
        showRow(account_.date, otherTimeNo());
        if (!other_->isVisible())
            month_->focusDay();
    });
}

QHBoxLayout* DayJudgement::makeButtons() {
    status_ = new LongLabel(this);
    status_->setObjectName(u"DayStatus"_s);
    makeOtherRowButton();
    auto* line = new QHBoxLayout;
    line->addWidget(status_, 1);
    line->addWidget(other_);
    struct Entry {
        QString caption;
        QString tip;
        QKeySequence key;
    };
    const Entry entries[] = {{u"複製"_s, u"複製整份判讀的文字"_s, Qt::CTRL | Qt::SHIFT | Qt::Key_C},
                             {u"列印"_s, u"列印這一頁"_s, QKeySequence::Print},
                             {u"存成 PDF"_s, u"把這一頁存成 PDF 檔"_s, QKeySequence::Save},
                             {u"離開"_s, u"關閉判讀"_s, Qt::Key_Escape}};
    int index = 0;
    for (const Entry& entry : entries) {
        QPushButton* button = makeButton(this, indexed(u"CmdDay"_s, index), entry.caption);
        button->setAutoDefault(false);
        button->setToolTip(u"%1（%2）"_s.arg(entry.tip, entry.key.toString(QKeySequence::NativeText)));
        onEvent(button, &QPushButton::clicked, this, [this, index] { CmdDay_Click(index); });
        if (index != Leave) { // Escape is every dialog's
            auto* key = new QShortcut(entry.key, this);
            key->setAutoRepeat(false);
            onEvent(key, &QShortcut::activated, this, [this, index] { CmdDay_Click(index); });
        }
        line->addWidget(button);
        ++index;
    }
    return line;
}

void DayJudgement::showAccount() {
    title_->setText(titleOf(account_));
    const QString other = otherTimeNo();
    other_->setText(u"時段 %1 的記錄"_s.arg(other));
    other_->setAccessibleName(other_->text());
    other_->setVisible(!other.isEmpty());
    picture_->setAccount(account_);
    sentences_->setPlainText(bodyText(account_));
    month_->setMonth(account_.month, account_.date);
    status_->clear();
}

QString DayJudgement::otherTimeNo() const {
    QStringList codes;
    for (const DayRemark& remark : account_.remarks)
        if (remark.remark == Remark::OtherRow)
            codes += remark.text;
    codes.sort();
    for (const QString& code : std::as_const(codes))
        if (code > account_.TimeNo)
            return code;
    return codes.value(0);
}

void DayJudgement::goTo(QDate day) {
    showRow(day, day == chosenDay_ ? chosenTimeNo_ : QString());
}

void DayJudgement::showRow(QDate day, const QString& TimeNo) {
    if (!trapRead([&] { account_ = explainDay(storePath(), account_.EmpNo, day, TimeNo, account_.list); }))
        return;
    if (!TimeNo.isEmpty()) {
        chosenDay_ = day;
        chosenTimeNo_ = TimeNo;
    }
    showAccount();
}

void DayJudgement::CmdDay_Click(int index) {
    switch (index) {
    case Copy:
        copy();
        return;
    case Print:
        print();
        return;
    case Pdf:
        savePdf();
        return;
    default:
        accept();
    }
}

void DayJudgement::copy() {
    QGuiApplication::clipboard()->setText(plainText(account_));
    status_->setText(u"已複製判讀的文字"_s);
}

void DayJudgement::print() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(u"當日判讀　"_s + titleOf(account_));
    printer.setCreator(ProgramTitle);
    printer.setFullPage(true);
    printer.setPageSize(QPageSize(QPageSize::A4));
    QPrintDialog dialog(&printer, this);
    dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintShowPageSize);
    if (!askForPrinter(dialog))
        return;
    // A file is made as the program makes all of them: what is not finished leaves nothing.
    const QString path = printer.outputFormat() == QPrinter::PdfFormat ? printer.outputFileName() : QString();
    const bool isDone = attempt(u"列印"_s, [&](const ProgressStep&) {
        const QPageLayout paper = printer.pageLayout();
        path.isEmpty() ? printDay(account_, printer)
                       : saveDayPdf(account_, path, paper.pageSize(), paper.orientation());
        return true;
    });
    if (isDone)
        status_->setText(path.isEmpty() ? u"已送到印表機"_s : u"已列印到 %1"_s.arg(path));
}

void DayJudgement::savePdf() {
    // A code may hold what would be a folder in a file's name.
    const QString EmpNo = QString(account_.EmpNo).replace(u'/', u'-');
    const QString name = u"當日判讀 %1 %2"_s.arg(account_.date.toString(u"yyyyMMdd"_s), EmpNo);
    const std::optional<QString> path =
        saveUnderChosenName(name, PdfKind, u"存成 PDF"_s, [&](const QString& file, const ProgressStep&) {
            saveDayPdf(account_, file, QPageSize(QPageSize::A4));
            return true;
        });
    if (path)
        status_->setText(u"已存成 %1"_s.arg(*path));
}

} // namespace pontrel
