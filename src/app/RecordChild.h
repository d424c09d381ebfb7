#pragma once

#include "app/RecordPage.h"
#include "app/Window.h"

class QVBoxLayout;

namespace pontrel {

/// A record window that covers the module window from which it was opened, with a caption of its own and one
/// page over one table, Data1. It closes the shared connection when it is unloaded and leaves the toolbar
/// locked.
class RecordChild : public Window {
    Q_OBJECT
  protected:
    RecordChild(QWidget* parent, const QString& name, const QString& caption, const QString& table);

    /// The width that its content has, in pixels.
    [[nodiscard]] static int contentWidth();
    /// Its controls stand below each other, under the caption.
    [[nodiscard]] QVBoxLayout& rows() { return *rows_; }
    [[nodiscard]] DataSource& Data1() { return *Data1_; }

    /// Makes its page of its controls; the source is set here.
    void makePage(RecordParts parts, const RecordRules& rules);

    void onLoad() override;
    void onUnload() override;

  private:
    QString table_;
    QVBoxLayout* rows_;
    DataSource* Data1_;
    RecordPage* page_ = nullptr;
};

} // namespace pontrel
