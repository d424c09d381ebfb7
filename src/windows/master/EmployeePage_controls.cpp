#include "windows/master/EmployeePage.h"

#include "app/ControlNames.h"
#include "app/Events.h"
#include "app/controls/NumberEntry.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBGrid.h"
#include "app/controls/TDBMask.h"
#include "app/controls/TabPages.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

// Which fields the employees' tab has, and where they sit.

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int NameWidth = 168; ///< Of the longest name; the two boxes beside it are as wide.
constexpr int CodeWidth = 62;  ///< Of the longest codes.
constexpr int DateWidth = 112;
constexpr int NumberWidth = 46;
constexpr int LineSpacing = 2;
constexpr int BoxHeight = 22; ///< Lower than usual: six lines and the list are to stand above each other.

CodeBoxRow codeRow(int number, LookupKind kind, const QString& label, const QString& caption,
                   const QString& column) {
    return {.number = number,
            .kind = kind,
            .box = indexed(u"Text6"_s, number + 2),
            .search = indexed(u"Search"_s, number + 5),
            .label = label,
            .caption = caption,
            .column = column,
            .spokenName = spoken(caption) + u"代碼"_s,
            .width = CodeWidth,
            .check = CodeCheck::Leaving};
}

/// The codes of an employee, Text6(3) to Text6(7).
const std::array<CodeBoxRow, 5> Codes = {
    codeRow(1, LookupKind::QFrmUnitNo, u"Label12"_s, u"單　　位："_s, u"UnitNo"_s),
    codeRow(2, LookupKind::QFrmClsNo, u"Label13"_s, u"班　　別："_s, u"ClsNo"_s),
    codeRow(3, LookupKind::QFrmTitleNo, u"Label14"_s, u"職　　稱："_s, u"TitleNo"_s),
    codeRow(4, LookupKind::QFrmWorkNo, u"Label15"_s, u"聘僱類別："_s, u"WorkNo"_s),
    codeRow(5, LookupKind::QFrmSuitNo, u"Label4(0)"_s, u"適用辦法："_s, u"SuitNo"_s)};

QGridLayout* makeGridOn(QWidget* page) {
    auto* grid = new QGridLayout(page);
    grid->setContentsMargins(6, 4, 6, 4);
    grid->setHorizontalSpacing(5);
    grid->setVerticalSpacing(LineSpacing);
    return grid;
}

QHBoxLayout* lineOf(std::initializer_list<QWidget*> parts) {
    auto* line = new QHBoxLayout;
    line->setSpacing(4);
    for (QWidget* part : parts)
        line->addWidget(part);
    return line;
}

std::vector<GridColumn> listColumns() {
    struct Heading {
        QString caption;
        QString column;
        int width;
    };
    const std::vector<Heading> headings = {{u"員工代碼"_s, u"EmpNo"_s, 68},
                                           {u"員工姓名"_s, u"EmpName"_s, 80},
                                           {u"身份證號"_s, u"Idno"_s, 90},
                                           {u"性別"_s, u"Sex"_s, 40},
                                           {u"生日"_s, u"Birth"_s, 82},
                                           {u"職稱代碼"_s, u"TitleNo"_s, 68},
                                           {u"單位代碼"_s, u"UnitNo"_s, 68},
                                           {u"聘僱別碼"_s, u"WorkNo"_s, 68},
                                           {u"班別代碼"_s, u"ClsNo"_s, 68},
                                           {u"到職日"_s, u"ArriveDate"_s, 82},
                                           {u"離職日"_s, u"LeaveDate"_s, 82},
                                           {u"初職公職日"_s, u"IniArrDate"_s, 82},
                                           {u"適用辦法"_s, u"SuitNo"_s, 68},
                                           {u"軍職年資"_s, u"SoldierY"_s, 68},
                                           {u"中斷年資"_s, u"BreakY"_s, 68},
                                           {u"休假年資"_s, u"HoliExper"_s, 68},
                                           {u"本年可休"_s, u"ThisYearHD"_s, 68},
                                           {u"本年已休"_s, u"ThisYearUse"_s, 68},
                                           {u"本年剩餘"_s, u"ThisYearLeft"_s, 68},
                                           {u"去年保留"_s, u"LastYearHD"_s, 68},
                                           {u"去年已休"_s, u"LastYearUse"_s, 68},
                                           {u"去年剩餘"_s, u"LastYearLeft"_s, 68},
                                           {u"電話"_s, u"Telephone"_s, 90},
                                           {u"地址"_s, u"Address"_s, 260},
                                           {u"備註"_s, u"Memo"_s, 140},
                                           {u"資位"_s, u"ExperLevel"_s, 110},
                                           {u"薪點"_s, u"SalaryPoint"_s, 80},
                                           {u"薪級"_s, u"SalaryLevel"_s, 80},
                                           {u"考試"_s, u"Exam"_s, 140},
                                           {u"學歷"_s, u"BackGround"_s, 140}};
    std::vector<GridColumn> columns;
    columns.reserve(headings.size());
    for (const Heading& heading : headings)
        columns.push_back({heading.caption, heading.column, heading.width, Qt::AlignLeft, {}});
    for (GridColumn& column : columns) {
        if (column.column == u"Sex")
            column.spokenMarks = {u"男"_s, u"女"_s};
    }
    return columns;
}

} // namespace

EmployeePage::EmployeePage(int tab) : RecordTab(masterTab(tab, u"員工資料"_s)) {
    TDBGrid* grid = makeGrid(u"TDBGrid1"_s);
    grid->setColumns(listColumns());
    SSTab2 = new TabPages(&frame(), u"SSTab2"_s, u"員工資料頁籤"_s);
    SSTab2->addTab(makeGeneralPage(), u"一般"_s);
    SSTab2->addTab(makeLeavePage(), u"請假"_s);
    SSTab2->addTab(makeTextPage({{15, u"電　　話："_s, u"Telephone"_s},
                                 {16, u"地　　址："_s, u"Address"_s},
                                 {17, u"備　　註："_s, u"Memo"_s}}),
                   u"通訊"_s);
    SSTab2->addTab(makeTextPage({{18, u"資　　位："_s, u"ExperLevel"_s},
                                 {19, u"薪　　點："_s, u"SalaryPoint"_s},
                                 {20, u"薪　　級："_s, u"SalaryLevel"_s},
                                 {21, u"考　　試："_s, u"Exam"_s},
                                 {22, u"學　　歷："_s, u"BackGround"_s}}),
                   u"考試經歷"_s);
    SSTab2->addTab(makeTextPage({{23, u"密　　碼："_s, u"Webpsw"_s}, {24, u"查詢權限："_s, u"WebNo"_s}}),
                   u"網頁"_s);
    const auto boxes = SSTab2->findChildren<QWidget*>();
    for (QWidget* box : boxes) {
        if (box->focusPolicy() != Qt::NoFocus &&
            box->parentWidget()->parentWidget()->parentWidget() == SSTab2)
            box->setFixedHeight(BoxHeight);
    }
    auto* pages = new QVBoxLayout(&frame());
    pages->setContentsMargins(0, 0, 0, 0);
    pages->addWidget(SSTab2);
    setFirstField(Text6[0]);

    rows().addWidget(grid, 1);
    rows().addWidget(&frame());
    rows().addWidget(&bar());
    // No state of the bar touches these two.
    onEvent(bar().addButton(13, u"計算休假年資"_s), &QPushButton::clicked, this,
            [this] { Q_EMIT computeSeniority(); });
    onEvent(bar().addButton(14, u"計算可休天數"_s), &QPushButton::clicked, this,
            [this] { Q_EMIT computeEntitlement(); });
}

QLineEdit* EmployeePage::makeText6(int index, const QString& spokenName, const QString& column, int width) {
    QLineEdit* box = fields().box(indexed(u"Text6"_s, index), spokenName, column, width);
    Text6.at(static_cast<std::size_t>(index)) = box;
    return box;
}

QLineEdit* EmployeePage::makeFreeText6(int index, const QString& spokenName, int width) {
    QLineEdit* box = fields().freeBox(indexed(u"Text6"_s, index), spokenName, width);
    makeNumberBox(*box);
    box->setText(u"0"_s);
    Text6.at(static_cast<std::size_t>(index)) = box;
    return box;
}

QWidget* EmployeePage::makeGeneralPage() {
    auto* page = new QWidget(&frame());
    QGridLayout& grid = *makeGridOn(page);
    const std::vector<TextField> texts = {{0, u"員工代碼："_s, u"EmpNo"_s},
                                          {1, u"姓　　名："_s, u"EmpName"_s},
                                          {2, u"身分證號："_s, u"IdNo"_s}};
    for (const auto& [index, caption, column] : texts) {
        QLineEdit* box = makeText6(index, spoken(caption), column, NameWidth);
        grid.addWidget(fields().caption(caption, box), index, 0, Qt::AlignRight);
        grid.addWidget(box, index, 1, Qt::AlignLeft);
    }
    QCheckBox* sex = fields().check(u"Check2"_s, u"男"_s, u"Sex"_s);
    sex->setAccessibleName(u"性別男"_s);
    grid.addWidget(fields().caption(u"性　　別："_s, sex), 3, 0, Qt::AlignRight);
    grid.addWidget(sex, 3, 1, Qt::AlignLeft);
    placeDate(grid, 4, 0, 0, u"出生日期："_s, u"Birth"_s);
    placeDate(grid, 5, 0, 1, u"到  職  日："_s, u"ArriveDate"_s);
    placeDate(grid, 0, 3, 2, u"離  職  日："_s, u"LeaveDate"_s);
    addCodes(grid);
    grid.setColumnMinimumWidth(2, 6);
    grid.setColumnStretch(4, 1);
    return page;
}

void EmployeePage::placeDate(QGridLayout& grid, int row, int column0, int index, const QString& caption,
                             const QString& column) {
    const DateFields pair = addDate(index, spoken(caption), column, EmployeeDatePair);
    pair.date->setFixedWidth(DateWidth);
    dates_.at(static_cast<std::size_t>(index)) = pair;
    grid.addWidget(fields().caption(caption, pair.mask), row, column0, Qt::AlignRight);
    QHBoxLayout* line = lineOf({pair.mask, pair.date});
    line->addStretch(1);
    grid.addLayout(line, row, column0 + 1);
}

void EmployeePage::addCodes(QGridLayout& grid) {
    int line = 1;
    for (const CodeBoxRow& row : Codes) {
        const CodeBox* code = addCode(row);
        Text6.at(static_cast<std::size_t>(row.number + FirstCode - 1)) = &code->box();
        code->addTo(grid, line++, 3);
    }
}

QWidget* EmployeePage::makeLeavePage() {
    auto* page = new QWidget(&frame());
    QGridLayout& grid = *makeGridOn(page);
    placeDate(grid, 0, 0, 3, u"初任公職："_s, u"IniArrDate"_s);
    addMonths(grid, 1, 8, 0, u"中斷年資："_s, u"BreakY"_s);
    addMonths(grid, 2, 10, 1, u"軍職年資："_s, u"SoldierY"_s);
    QLineEdit* seniority = makeText6(12, u"休假年資"_s, u"HoliExper"_s, NumberWidth);
    grid.addWidget(fields().caption(u"休假年資："_s, seniority), 3, 0, Qt::AlignRight);
    QHBoxLayout* line = lineOf({seniority, fields().caption(u"年"_s)});
    line->addStretch(1);
    grid.addLayout(line, 3, 1);
    const std::vector<Balance> balances = {{13, 2, 0, u"本年可休："_s, u"已休"_s, u"ThisYear"_s},
                                           {14, 3, 1, u"去年保休："_s, u"已休"_s, u"LastYear"_s},
                                           {25, 6, 4, u"事       假："_s, u"已請"_s, u"Leave"_s},
                                           {26, 7, 5, u"病       假："_s, u"已請"_s, u"Sick"_s}};
    for (std::size_t row = 0; row < balances.size(); ++row)
        addBalance(grid, static_cast<int>(row), balances.at(row));
    grid.setColumnMinimumWidth(2, 6);
    grid.setColumnStretch(4, 1);
    grid.setRowStretch(static_cast<int>(balances.size()), 1);
    return page;
}

void EmployeePage::addMonths(QGridLayout& grid, int row, int firstBox, int carrier, const QString& caption,
                             const QString& column) {
    QLineEdit* years = makeFreeText6(firstBox, spoken(caption) + u"年數"_s, NumberWidth);
    QLineEdit* months = makeFreeText6(firstBox + 1, spoken(caption) + u"月數"_s, NumberWidth);
    Text7.at(static_cast<std::size_t>(carrier)) = fields().hiddenBox(indexed(u"Text7"_s, carrier), column);
    grid.addWidget(fields().caption(caption, years), row, 0, Qt::AlignRight);
    QHBoxLayout* line = lineOf({years, fields().caption(u"年"_s), months, fields().caption(u"月"_s)});
    line->addStretch(1);
    grid.addLayout(line, row, 1);
}

void EmployeePage::addBalance(QGridLayout& grid, int row, const Balance& balance) {
    QLineEdit* grant =
        makeText6(balance.index, spoken(balance.caption), balance.columns + u"HD"_s, NumberWidth);
    const auto shownNumber = [this](int label, const QString& column) {
        QLabel* number = fields().shown(indexed(u"Label25"_s, label), column);
        number->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
        number->setFixedHeight(BoxHeight);
        number->setMinimumWidth(NumberWidth);
        Label25.at(static_cast<std::size_t>(label)) = number;
        return number;
    };
    QLabel* used = shownNumber(balance.used, balance.columns + u"Use"_s);
    QLabel* left = shownNumber(balance.left, balance.columns + u"Left"_s);
    grid.addWidget(fields().caption(balance.caption, grant), row, 3, Qt::AlignRight);
    QHBoxLayout* line =
        lineOf({grant, fields().caption(balance.usedCaption), used, fields().caption(u"剩餘"_s), left});
    line->addStretch(1);
    grid.addLayout(line, row, 4);
}

QWidget* EmployeePage::makeTextPage(const std::vector<TextField>& texts) {
    auto* page = new QWidget(&frame());
    QGridLayout& grid = *makeGridOn(page);
    int row = 0;
    for (const auto& [index, caption, column] : texts) {
        QLineEdit* box = makeText6(index, spoken(caption), column);
        grid.addWidget(fields().caption(caption, box), row, 0, Qt::AlignRight);
        grid.addWidget(box, row++, 1);
    }
    grid.setColumnStretch(1, 1);
    grid.setRowStretch(row, 1);
    return page;
}

} // namespace pontrel
