#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

namespace pontrel {

/// A place in the manual: a chapter by its file name, a heading in it, a text behind that heading. A part
/// that is empty counts as not given; without a heading it is the chapter's beginning.
struct HelpPlace {
    QString chapter;
    QString heading{};
    QString text{};

    friend bool operator==(const HelpPlace&, const HelpPlace&) = default;
};

/// The manual as it is written: chapters in Markdown, in the order of the links on the first one, "index.md".
/// Which window belongs to which place stands in "places.txt".
class Manual {
  public:
    struct Heading {
        int level; ///< From 1.
        QString text;
    };
    struct Chapter {
        QString name; ///< Of its file.
        QString title;
        QString markdown;
        std::vector<Heading> headings; ///< The title is the first.
    };

    /// Reads the manual of that folder; chapters that are not there are left out.
    explicit Manual(const QString& folder);

    /// The one that is compiled into the program.
    [[nodiscard]] static const Manual& ofProgram();
    /// Where that one lies, with its pictures.
    static const QString ProgramFolder;

    [[nodiscard]] const std::vector<Chapter>& chapters() const { return chapters_; }
    /// The number of the chapter from 0; -1 where there is none of that name.
    [[nodiscard]] int find(const QString& chapter) const;
    /// The text of a chapter as it is shown, with one character for each picture.
    [[nodiscard]] const QString& shownText(int chapter) const;

    /// The place of a window: by its object name, else by a heading that is its title. With tabs, the
    /// captions of those in front from the outermost to the innermost, it is the heading of the innermost
    /// that has one. The first chapter where nothing tells of the window.
    [[nodiscard]] HelpPlace placeOfWindow(const QString& objectName, const QString& title,
                                          const QStringList& tabs) const;
    /// Whether something tells of the window itself.
    [[nodiscard]] bool knowsWindow(const QString& objectName, const QString& title) const;
    /// The place where a message is explained, the text being the message as the manual has it; the beginning
    /// of the chapter of messages where it is not.
    [[nodiscard]] HelpPlace placeOfMessage(const QString& message) const;

  private:
    struct Message {
        QString written; ///< With parts such as 〈日期〉 for what varies.
        QString heading;
    };

    void readChapter(const QString& path, const QString& name);
    void readPlaces(const QString& path);
    void readMessages();
    [[nodiscard]] HelpPlace ownPlace(const QString& objectName, const QString& title) const;

    std::vector<Chapter> chapters_;
    mutable std::vector<QString> shown_; ///< Filled as they are asked for.
    QHash<QString, HelpPlace> places_;   ///< Of object names.
    std::vector<Message> messages_;
};

} // namespace pontrel
