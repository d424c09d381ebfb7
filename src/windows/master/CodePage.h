#pragma once

#include "windows/master/MasterTab.h"

namespace pontrel {

/// A tab that is a mere list of codes and names, by its captions and columns. Its table is that of its tab.
struct CodeTable {
    QString caption; ///< Of the tab.
    QString codeLabel;
    QString codeColumn;
    QString nameLabel;
    QString nameColumn;
    QString codeHeading; ///< Of the grid's columns.
    QString nameHeading;
};

/// The page of a plain code table: the boxes Text<t+1>(0) and Text<t+1>(1) and the grid TDBGrid2(t).
class CodePage : public RecordTab {
    Q_OBJECT
  public:
    CodePage(int tab, const CodeTable& table);
};

} // namespace pontrel
