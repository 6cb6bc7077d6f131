#pragma once

#include <QString>
#include <QStringList>

#include <vector>

/// What the help pages in a folder hold: the contents, the keywords and the words. All of it stands
/// in the pages themselves, which are well-formed XML: "innhold.htm" links to the others in the
/// order of the contents, a heading with an `id` is a section, and a heading's `data-stikkord` has
/// the keywords that lead there, separated by ";".
class HelpBook
{
public:
    /// The page with the contents, which is also the first of them.
    static constexpr QStringView kContents = u"innhold.htm";

    /// A heading and what it is found by.
    struct Section
    {
        QString title;
        QString target; ///< as a link has it: "ordre.htm", "ordre.htm#linjene"
        QStringList keywords;
    };
    struct Page
    {
        std::vector<Section> sections; ///< the first is the page itself, and is always there
        QString text;                  ///< all that is read on it
    };
    /// A line of a list of places to read.
    struct Entry
    {
        QString text;
        QString target;
    };

    /// A book without pages.
    HelpBook() = default;
    /// A page that is missing, or no XML, is left out.
    explicit HelpBook(const QString &folder);

    /// In the order of the contents.
    [[nodiscard]] const std::vector<Page> &pages() const { return m_pages; }
    /// The keywords that have `part` in them, in Norwegian order, without regard to case; one that
    /// leads to several places has the page's title behind it.
    [[nodiscard]] std::vector<Entry> keywords(const QString &part) const;
    /// The pages on which all the words of `words` stand, whole or as a part of a word, without
    /// regard to case; none when there is no word.
    [[nodiscard]] std::vector<Entry> pagesWith(const QString &words) const;

    /// What `words` is searched for by.
    [[nodiscard]] static QStringList wordsOf(const QString &words);

private:
    std::vector<Page> m_pages;
    std::vector<Entry> m_keywords; ///< in their order
};
