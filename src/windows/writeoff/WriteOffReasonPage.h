#pragma once

#include "app/RecordTab.h"

namespace pontrel {

/// The tab of the write-off reasons: a code, a text and a remark.
class WriteOffReasonPage : public RecordTab {
    Q_OBJECT
  public:
    WriteOffReasonPage();

    [[nodiscard]] RecordRules rules() override;
};

} // namespace pontrel
