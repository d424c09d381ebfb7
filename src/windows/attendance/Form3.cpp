#include "windows/attendance/Form3.h"

#include "app/ControlNames.h"
#include "app/EnterAsTab.h"
#include "app/Events.h"
#include "app/FrmI1Date.h"
#include "app/Module1.h"
#include "app/Prompts.h"
#include "app/SafetyCopies.h"
#include "app/WindowRegistry.h"
#include "app/controls/StatusBar.h"
#include "app/controls/TabPages.h"
#include "rules/NoDate.h"
#include "rules/Session.h"
#include "store/DataSource.h"
#include "windows/attendance/PunchQueryPage.h"
#include "windows/attendance/ReadPage.h"
#include "windows/attendance/ResultPage.h"

#include <QDir>
#include <QProgressBar>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

/// The pages of SSTab1.
enum Tab { ReadTab, PunchQueryTab, ExceptionTab, AttendanceQueryTab };

} // namespace

void Form3::registerWindow() {
    registerModuleWindow(3, [](QWidget* parent) { return new Form3(parent); });
}

Form3::Form3(QWidget* parent) : TabbedWindow(parent, u"Form3"_s, u"出勤管理"_s) {
    makePages();
    addStatusBar();
    connectControls();
}

Form3::~Form3() = default;

void Form3::makePages() {
    const auto follower = [this](int index) {
        auto* source = new DataSource(this);
        source->setObjectName(indexed(u"Data3"_s, index));
        source->setDatabaseName(storePath());
        return source;
    };
    const FollowingRows following{follower(1), follower(2)};
    reading_ = new ReadPage(ReadTab, names_);
    exceptions_ = new ExceptionPage(ExceptionTab, following, names_);
    const auto add = [this](AttendancePage* page, const QString& caption) {
        SSTab1->addTab(page, caption);
        pages_.push_back(page);
    };
    add(reading_, u"讀取記錄"_s);
    add(new PunchQueryPage(PunchQueryTab, names_), u"記錄查詢"_s);
    add(exceptions_, u"異常處理"_s);
    add(new AttendanceQueryPage(AttendanceQueryTab, following, names_), u"勤惰查詢"_s);
}

void Form3::connectControls() {
    // Enter in the code box is its own: it runs the query.
    EnterAsTab::install(*this)->leaveBoxesOf(*pages_.at(PunchQueryTab));
    for (AttendancePage* page : pages_) {
        onEvent(page, &AttendancePage::jump, this, [this](int module, int tab) { jumpTo(module, tab); });
        onEvent(page, &AttendancePage::leave, this, [this] { unload(); });
        onEvent(&page->source(), &DataSource::Reposition, this, [this, page] { Data1_Reposition(*page); });
    }
    onEvent(reading_, &ReadPage::readPunchFile, this, [this] { readPunchFile(); });
    onEvent(exceptions_, &ExceptionPage::recalculate, this, [this] { recalculate(); });
    onEvent(SSTab1, &QTabWidget::currentChanged, this, [this] { SSTab1_Click(); });
    // A click on the page's own tab binds it anew as well.
    onEvent(SSTab1, &TabPages::frontTabClicked, this, [this] { SSTab1_Click(); });
}

void Form3::onLoad() {
    OpenDB();
    AttendanceHost& host = *this;
    calculation_ = std::make_unique<DailyCalculation>(sharedDatabase(), host);
    openTrapped([this] { bindTab(); });
}

void Form3::onUnload() {
    CloseDB();
    UnlockToolbar();
}

AttendancePage& Form3::currentPage() const {
    return *pages_.at(static_cast<std::size_t>(SSTab1->currentIndex()));
}

void Form3::SSTab1_Click() {
    TabBound = false;
    // Unlike a failed load this leaves gOpenFailed alone: the window has opened.
    trapRead([this] { bindTab(); });
}

void Form3::bindTab() {
    if (TabBound)
        return;
    currentPage().bind();
    showCounter();
    TabBound = true;
}

void Form3::showCounter() {
    showCounterOf(currentPage().source());
}

void Form3::showCounterOf(DataSource& source) {
    StbTool->showCounter(source.recordset().AbsolutePosition(), source.recordset().RecordCount());
}

void Form3::Data1_Reposition(AttendancePage& page) {
    if (calculation_ && calculation_->ImportRunning())
        StbTool->setText(1, u"執行狀況："_s);
    else
        showCounterOf(page.source());
    if (&page == &currentPage())
        page.followRow();
}

void Form3::readPunchFile() {
    calculation_->ReadPunchFile();
    logSilentEnd();
    // After an import that ended early what panel 1 shows stays.
    if (calculation_->finished())
        showCounter();
}

void Form3::recalculate() {
    FrmI1Date::ask(this, u"重算日期"_s, exceptions_->currentDay());
    if (gDate1 == NoDate)
        return;
    calculation_->Recalculate(gDate1);
    logSilentEnd();
}

/// The user is told nothing of an action that ended early; whoever looks after the program finds the cause on
/// its error output.
void Form3::logSilentEnd() const {
    if (const std::optional<RunTimeError>& failure = calculation_->lastError())
        logError(*failure);
}

std::optional<QString> Form3::choosePunchFile(const QString& folder) {
    gHandPath = folder; // which the settings' folder dialog leaves behind when it is cancelled
    // A relative one counts from the program's folder, which can be moved with it.
    return chooseFile(QDir(programFolder()).absoluteFilePath(folder), u"Text (*.txt)"_s);
}

void Form3::beforeReplacingDay() {
    SafetyCopies::before(CopyReason::Replace);
}

void Form3::setProgressShown(bool shown) {
    QProgressBar& bar = reading_->ProgressBar1();
    if (shown)
        bar.setValue(bar.minimum());
    bar.setVisible(shown);
}

int Form3::progress() const {
    return reading_->ProgressBar1().value();
}

void Form3::setProgress(int value) {
    reading_->ProgressBar1().setValue(value);
}

void Form3::showPunches(const QString& statement) {
    reading_->source().refreshUnseen(); // the next line but one replaces its rows
    reading_->source().setRecordSource(statement);
    reading_->run();
}

void Form3::refreshExceptions() {
    // The rows of a covered page are read when it is bound, and its counter does not show while an import
    // runs.
    if (&currentPage() == exceptions_ || !calculation_->ImportRunning())
        exceptions_->run();
    else
        exceptions_->source().refreshUnseen();
}

void Form3::showExceptions(const QString& statement) {
    exceptions_->source().setRecordSource(statement);
    exceptions_->run();
}

} // namespace pontrel
