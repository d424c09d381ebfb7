#pragma once

#include <QHash>
#include <QMap>
#include <QString>

namespace pontrel {

/// What one user's windows remember from one start to the next: zoom and widths of columns. No rule of the
/// program reads it. It stands in memory until keepIn() names its file, which the entry of a program does:
/// tests and other programs never touch the file of whoever runs them. A file that is missing, damaged or
/// unwritable means defaults, and nobody is told. For the window thread alone.
class Habits {
  public:
    static constexpr int FullSize = 100; ///< Percent: the zoom until the user changes it.

    /// Those of this process.
    [[nodiscard]] static Habits& ofUser();
    /// Where the habits of the user who runs the program stand; the file need not be there.
    [[nodiscard]] static QString userFile();

    /// Reads the file in place of what is remembered, and writes to it from now on.
    void keepIn(const QString& file);
    /// Remembers nothing and leaves the file alone, as at the start of the process.
    void leave();

    /// In percent, as it stands: see Zoom.h for the steps that there are.
    [[nodiscard]] int zoom() const;
    void setZoom(int percent);

    /// The widths that the user gave to columns of a grid, in pixels, by the names of the columns.
    [[nodiscard]] QMap<QString, int> columnWidths(const QString& grid) const;
    /// No widths: those of the program.
    void setColumnWidths(const QString& grid, const QMap<QString, int>& widths);

    /// A habit without a function of its own; empty where there is none.
    [[nodiscard]] QString value(const QString& key) const { return values_.value(key); }
    /// An empty text forgets it. The file holds it when this returns, as far as it can be written.
    void setValue(const QString& key, const QString& text);

  private:
    QHash<QString, QString> values_;
    QString file_; ///< Empty: in memory alone.
};

} // namespace pontrel
