#pragma once

#include "windows/master/Form1Fixture.h"

namespace pontrel::test {

/// One of the tabs 0 to 4 of the master data, which differ in nothing but what stands here.
struct PlainPage {
    QString caption;
    QString table;
    QString codeColumn;
    QString nameColumn;
    QString boxes; ///< The array of the entry boxes; code and name have the indexes 0 and 1.

    [[nodiscard]] QString codeBox() const { return boxes + QStringLiteral("(0)"); }
    [[nodiscard]] QString nameBox() const { return boxes + QStringLiteral("(1)"); }
    /// What the store tells of a row with code and name alone; a null text for a null.
    [[nodiscard]] QString row(const QString& code, const QString& name) const {
        return expectedRow(table, {{codeColumn, code}, {nameColumn, name.isNull() ? Value() : Value(name)}});
    }
};

inline const QList<PlainPage> PlainPages{
    {QStringLiteral("職稱設定"), QStringLiteral("Base01"), QStringLiteral("TitleNo"), QStringLiteral("Title"),
     QStringLiteral("Text1")},
    {QStringLiteral("單位設定"), QStringLiteral("Base02"), QStringLiteral("UnitNo"), QStringLiteral("Unit"),
     QStringLiteral("Text2")},
    {QStringLiteral("聘僱類別"), QStringLiteral("Base03"), QStringLiteral("WorkNo"),
     QStringLiteral("WorkType"), QStringLiteral("Text3")},
    {QStringLiteral("時段設定"), QStringLiteral("Base04"), QStringLiteral("TimeNo"),
     QStringLiteral("TimeName"), QStringLiteral("Text4")},
    {QStringLiteral("班別設定"), QStringLiteral("Base05"), QStringLiteral("ClsNo"),
     QStringLiteral("ClassName"), QStringLiteral("Text5")},
};

/// For a test's data function: one row a tab.
inline void eachPlainPage() {
    QTest::addColumn<int>("tab");
    for (int tab = 0; tab < PlainPages.size(); ++tab)
        QTest::newRow(qUtf8Printable(PlainPages.at(tab).caption)) << tab;
}

/// The master data open on one of the tabs 0 to 4, with a reports window to jump to.
class PlainPageFixture : public Form1Fixture {
  public:
    explicit PlainPageFixture(int tab) : tab_(tab), page_(PlainPages.at(tab)) {}

    /// Rows of the codes 1, 2 and so on, with the names 名1, 名2.
    void addCodes(int count) {
        for (int code = 1; code <= count; ++code)
            addCode(QString::number(code), QStringLiteral("名%1").arg(code));
    }
    void addCode(const QString& code, const QString& name) {
        insertRow(database(), page_.table, {{page_.codeColumn, code}, {page_.nameColumn, name}});
    }
    void openPage() { open(tab_); }

    [[nodiscard]] const PlainPage& page() const { return page_; }
    [[nodiscard]] QString button(int index) const {
        return QStringLiteral("CtrlCmd%1(%2)").arg(tab_).arg(index);
    }
    void pressButton(int index) { press(button(index)); }
    [[nodiscard]] QList<int> on() const { return buttonsOn(QStringLiteral("CtrlCmd%1").arg(tab_)); }
    [[nodiscard]] bool frameOn() const { return at(QStringLiteral("Frame1(%1)").arg(tab_)).isEnabled(); }
    /// Clicks the square of a check box, which may be wider than its caption.
    void tick(const QString& name) const {
        QWidget& box = at(name);
        QTest::mouseClick(box.window()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          box.mapTo(box.window(), QPoint(8, box.height() / 2)));
    }
    void typeRow(const QString& code, const QString& name) {
        type(page_.codeBox(), code);
        type(page_.nameBox(), name);
    }
    /// The table as another program sees it.
    [[nodiscard]] QStringList rows() const { return rowsOf(*store.connect(), page_.table); }
    /// Code and name as the screen shows them, and the counter before them.
    [[nodiscard]] QString shown() const {
        return panel(1) + u'|' + text(page_.codeBox()) + u'|' + text(page_.nameBox());
    }

  private:
    int tab_;
    const PlainPage& page_;
};

} // namespace pontrel::test
