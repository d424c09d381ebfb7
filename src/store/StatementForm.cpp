#include "store/StatementForm.h"

#include <utility>

namespace pontrel {

StatementForm::StatementForm(QString sample) : sample_(std::move(sample)) {
    static int forms = 0;
    number_ = ++forms;
}

} // namespace pontrel
