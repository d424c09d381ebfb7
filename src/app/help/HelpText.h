#pragma once

#include <QTextBrowser>

namespace pontrel {

/// The text of a chapter. Pictures come from the manual alone, and the wheel with Ctrl tells of a step in
/// size.
class HelpText : public QTextBrowser {
    Q_OBJECT
  public:
    explicit HelpText(QWidget* parent);

    /// Shows a chapter, laid out to be read: with room around headings, paragraphs and cells.
    void showChapter(const QString& markdown);
    /// The heading in the cursor's line or above it; empty above the first one.
    [[nodiscard]] QString headingOfCursor() const;
    /// The position of what stands at the top of what is in sight.
    [[nodiscard]] int positionAtTop() const;
    /// Puts the cursor there and scrolls so that its line stands at the top, as far as the text reaches.
    void bringToTop(int position);
    /// Scrolls as far as that, in pixels, and puts the cursor at the top of what is in sight.
    void scrollBackTo(int scrolled);
    /// The position of the heading; -1 where the chapter has none of that text.
    [[nodiscard]] int positionOf(const QString& heading) const;

  Q_SIGNALS:
    void zoomStep(bool in);

  protected:
    QVariant loadResource(int type, const QUrl& name) override;
    void wheelEvent(QWheelEvent* event) override;

  private:
    void layOutBlocks();
    void layOutTables();
};

} // namespace pontrel
