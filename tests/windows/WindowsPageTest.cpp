#include "app/controls/StatusBar.h"
#include "store/DataSource.h"
#include "support/SavedFiles.h"
#include "support/TestStore.h"
#include "windows/EveryWindow.h"

#include <QAccessible>
#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

/// The class as a reader of the sources looks for it.
QString kindOf(const QObject& object) {
    return QString::fromLatin1(object.metaObject()->className()).remove(u"pontrel::"_s);
}

/// Whether it has a name by which it is found: not one of Qt's own parts.
bool isNamed(const QObject& object) {
    const QString name = object.objectName();
    return !name.isEmpty() && !name.startsWith(u"qt_") &&
           (object.isWidgetType() || qobject_cast<const DataSource*>(&object));
}

/// The name of a control for assistive technology, on one line; panels say what they hold at the moment.
QString spokenBy(QObject& object) {
    const auto* widget = qobject_cast<const QWidget*>(&object);
    if (!widget || qobject_cast<const StatusPanel*>(widget))
        return {};
    QString name = widget->accessibleName();
    if (QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&object);
        name.isEmpty() && spoken)
        name = spoken->text(QAccessible::Name);
    return name.simplified().replace(u'|', u"\\|"_s);
}

/// The lines of a page, a table of what is named on each tab.
class WindowsPage {
  public:
    void addWindow(QWidget& window) {
        lines_ << u"## %1: %2"_s.arg(window.objectName(), spokenBy(window)) << QString();
        addPart(window);
    }
    [[nodiscard]] const QStringList& lines() const { return lines_; }

  private:
    /// What is named in a window or on a tab but lies on none of its tabs; then the tabs.
    void addPart(const QWidget& part) {
        rows_.clear();
        QList<const QTabWidget*> tabs;
        walk(part, tabs);
        if (!rows_.isEmpty())
            lines_ << u"| Name | Class | Says |"_s << u"|---|---|---|"_s << rows_ << QString();
        for (const QTabWidget* each : tabs) {
            for (int tab = 0; tab < each->count(); ++tab) {
                lines_ << u"### %1, tab %2: %3"_s.arg(each->objectName()).arg(tab).arg(each->tabText(tab))
                       << QString();
                addPart(*each->widget(tab));
            }
        }
    }

    void walk(const QObject& parent, QList<const QTabWidget*>& tabs) {
        for (QObject* child : parent.children()) {
            if (isNamed(*child))
                rows_ << u"| `%1` | %2 | %3 |"_s.arg(child->objectName(), kindOf(*child), spokenBy(*child));
            if (const auto* found = qobject_cast<const QTabWidget*>(child))
                tabs << found;
            else
                walk(*child, tabs);
        }
    }

    QStringList lines_;
    QStringList rows_;
};

} // namespace

/// The page in docs/ that lists what is named in each window, compared with the windows as they run.
class WindowsPageTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void thePageTellsWhatTheWindowsHold();
};

void WindowsPageTest::thePageTellsWhatTheWindowsHold() {
    const TestStore store;
    const Shell shell(store);
    registerWindows();
    WindowsPage page;
    page.addWindow(*gMDI);
    for (const EveryWindow& each : everyWindow()) {
        each.open();
        page.addWindow(*each.opened());
        each.opened()->unload();
    }
    for (const EveryDialog& each : everyDialog()) {
        if (each.objectName == u"MsgBox")
            continue; // its buttons are Qt's
        PromptAnswers answers;
        answers.expect(each.objectName, [&page](QWidget& dialog) {
            page.addWindow(dialog);
            closeDialog(dialog);
        });
        each.show();
    }

    QFile file(QStringLiteral(PONTREL_WINDOWS_PAGE));
    QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(file.fileName()));
    const QString held = QString::fromUtf8(file.readAll());
    const qsizetype begin = held.indexOf(u"\n## ");
    const QString preface = begin < 0 ? held : held.left(begin + 1);
    const QString expected = preface + page.lines().join(u'\n');
    const QString made = QDir::current().filePath(u"windows.md"_s);
    writeContent(made, expected.toUtf8());
    QVERIFY2(held == expected, qPrintable(u"what the windows hold now is in "_s + made +
                                          u"; look at the difference and put it in the page's place"_s));
}

int main(int argc, char** argv) {
    return runTests<WindowsPageTest>(argc, argv);
}

#include "WindowsPageTest.moc"
