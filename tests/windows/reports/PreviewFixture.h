#pragma once

#include "support/AppSupport.h"
#include "support/Builders.h"
#include "support/Patience.h"
#include "support/SavedFiles.h"
#include "windows/reports/Cr1.h"
#include "windows/reports/PageView.h"
#include "windows/reports/Previews.h"

#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QToolButton>

namespace pontrel::test {

/// The main window over a store of employees in three units, and a preview of them on many pages.
class PreviewFixture {
  public:
    static constexpr int Units = 3;
    static constexpr int EmployeesOfUnit = 120;

    TestStore store;
    PromptAnswers answers;
    QTemporaryDir folder; ///< For the template and what is saved.
    Cr1 control;

    explicit PreviewFixture(const QString& formula = {}, int employeesOfUnit = EmployeesOfUnit) {
        store.holdOpen();
        for (int unit = 1; unit <= Units; ++unit) {
            const QString UnitNo = QString::number(1000 * unit);
            insertRow(store.database(), QStringLiteral("Base02"),
                      {{u"UnitNo", UnitNo}, {u"Unit", QStringLiteral("第%1課").arg(unit)}});
            for (int employee = 1; employee <= employeesOfUnit; ++employee)
                addEmployee(
                    store.database(), QStringLiteral("%1%2").arg(unit).arg(employee, 5, 10, QChar(u'0')),
                    {{u"UnitNo", UnitNo},
                     {u"EmpName", employee % 50 == 7 ? QStringLiteral("李小龍") : QStringLiteral("Wang")}});
        }
        store.commit();
        shell_ = std::make_unique<Shell>(store);
        control.setDataFile(store.path());
        control.reportFileName = folder.filePath(QStringLiteral("X01.rpt"));
        writeContent(control.reportFileName, Layout);
        control.selectionFormula = {formula};
        control.showPrint = control.showExport = true;
        control.setFormula(0, QStringLiteral("Title='範例公司'"));
    }
    ~PreviewFixture() { qDeleteAll(previews()); }
    PreviewFixture(const PreviewFixture&) = delete;
    PreviewFixture& operator=(const PreviewFixture&) = delete;

    /// Opens a preview of 1,000 by 700 pixels or what of that the screen has room for; those before it stay.
    ReportPreview& open() {
        const QList<ReportPreview*> before = previews();
        control.setAction(1);
        for (ReportPreview* each : previews()) {
            if (!before.contains(each))
                preview_ = each;
        }
        if (!QTest::qWaitForWindowActive(preview_, PatienceMs))
            qFatal("the preview does not become active");
        return *preview_;
    }

    [[nodiscard]] MDI& mainWindow() { return shell_->window(); }
    [[nodiscard]] ReportPreview& preview() const { return *preview_; }
    [[nodiscard]] PageView& pages() const { return preview_->pages(); }
    [[nodiscard]] int pageCount() const { return preview_->document().pageCount(); }

    template<typename Control = QWidget>
    [[nodiscard]] Control& at(const QString& name) const {
        return pontrel::test::control<Control>(*preview_, name);
    }
    [[nodiscard]] QString text(const QString& box) const { return at<QLineEdit>(box).text(); }
    [[nodiscard]] QString label(const QString& name) const { return at<QLabel>(name).text(); }
    void press(const QString& name) { click(at(name)); }
    /// The key goes to the window, as one of the keyboard.
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(preview_->windowHandle(), key, modifiers);
    }
    void type(const QString& text) {
        for (const QChar character : text)
            QTest::keyClick(preview_->windowHandle(), character.toLatin1());
    }
    /// The files of the folder but for the template, hidden ones too.
    [[nodiscard]] QStringList files() const {
        QStringList names =
            QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
        names.removeOne(QStringLiteral("X01.rpt"));
        return names;
    }

  private:
    static constexpr const char* Layout =
        "<report format=\"1\" code=\"x01\" caption=\"員工名冊\"><rows from=\"Base06\">"
        "<look-up table=\"Base02\" on=\"UnitNo\"/></rows>"
        "<heading><text font=\"title\">{Title}</text><text left=\"{Caption}\" right=\"{Page} / "
        "{Pages}\"/></heading>"
        "<group by=\"Base06.UnitNo\" in-tree=\"{Base06.UnitNo} {Base02.Unit}\">"
        "<header>{Base02.Unit}</header></group><order by=\"Base06.EmpNo\"/><columns>"
        "<column caption=\"員工碼\" width=\"40\">{Base06.EmpNo}</column>"
        "<column caption=\"姓名\" width=\"60\" align=\"right\">{Base06.EmpName}</column></columns>"
        "<end label=\"共 {Count} 人\"/></report>";

    std::unique_ptr<Shell> shell_;
    ReportPreview* preview_ = nullptr;
};

} // namespace pontrel::test
