#pragma once

#include "paper/ReportDocument.h"
#include "support/TestStore.h"

#include <QDate>
#include <QList>
#include <QString>

#include <memory>

namespace pontrel::test {

/// A report to print of the example organisation.
struct DemoPrint {
    QString code;
    QDate first, last;
    QList<std::pair<int, QString>> combos; ///< Others than at the start.
};

/// The example organisation after its ten days have been read, and its reports, all printed on 2010/04/01.
class DemoPrints {
  public:
    DemoPrints();

    [[nodiscard]] TestStore& store() { return store_; }
    /// With all leave types and reasons, in the program's face.
    [[nodiscard]] std::shared_ptr<const paper::ReportDocument> print(const DemoPrint& print);

  private:
    TestStore store_;
};

} // namespace pontrel::test
