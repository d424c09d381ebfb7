#pragma once

#include <QString>

namespace pontrel {

/// A statement that is run many times with other values: written down with a sample of each of its literals,
/// which Database::execute() and select() replace, in their order, by the values of a run. What is run is the
/// statement that joining those values into the text would give, without cutting the text anew.
class StatementForm {
  public:
    explicit StatementForm(QString sample);

    [[nodiscard]] const QString& sample() const { return sample_; }
    [[nodiscard]] int number() const { return number_; } ///< One of its own in the process.

  private:
    QString sample_;
    int number_;
};

} // namespace pontrel
