#include "op_dialog_block.h"

#include <algorithm>

namespace standin
{

namespace
{

constexpr std::size_t deepest = 64;

std::string withoutRemarks(const std::string& text)
{
    std::string kept;
    for (std::size_t begin = 0; begin < text.size();)
    {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        const std::size_t first = text.find_first_not_of(" \t", begin);
        if (first >= end || text[first] != '#')
            kept.append(text, begin, end - begin);
        kept += '\n';
        begin = end + 1;
    }
    return kept;
}

/// The lists that lines are added to, the innermost last. A list does not grow while a block of its last line is open,
/// so the pointers stay good.
class Nesting
{
public:
    explicit Nesting(std::vector<DialogLine>& lines) : m_lists{&lines} {}

    void add(const Line& words)
    {
        if (!m_tooDeep)
            m_lists.back()->push_back({words, {}});
    }

    void open()
    {
        if (m_lists.size() > deepest)
            ++m_tooDeep;
        else
        {
            if (m_lists.back()->empty())
                m_lists.back()->push_back({{}, {}});
            m_lists.push_back(&m_lists.back()->back().inside);
        }
        m_wentTooDeep = m_wentTooDeep || m_tooDeep;
    }

    void close()
    {
        if (m_tooDeep)
            --m_tooDeep;
        else if (m_lists.size() > 1)
            m_lists.pop_back();
        else
            m_unbalanced = true;
    }

    std::string complaint() const
    {
        if (m_wentTooDeep)
            return "its blocks are nested more than " + std::to_string(deepest) + " deep";
        return m_unbalanced || m_lists.size() > 1 ? "its braces do not match" : "";
    }

private:
    std::vector<std::vector<DialogLine>*> m_lists;
    int m_tooDeep = 0; ///< open blocks that are left out
    bool m_wentTooDeep = false;
    bool m_unbalanced = false;
};

} // namespace

std::vector<DialogLine> readDialogLines(const std::string& text, std::string& why)
{
    std::vector<DialogLine> lines;
    Nesting nesting(lines);
    const auto isBrace = [](const Word& word) { return word.is("{") || word.is("}"); };
    for (const Line& line : readLines(withoutRemarks(text), why))
    {
        const auto brace = std::find_if(line.begin(), line.end(), isBrace);
        const bool closes =
            std::any_of(line.begin(), line.end(), [](const Word& word) { return word.is("}"); });
        if (brace != line.begin() && (brace == line.end() || closes))
        {
            // All on one line: the braces hold a list of words.
            Line words;
            std::copy_if(line.begin(), line.end(), std::back_inserter(words),
                         [&](const Word& word) { return !isBrace(word); });
            nesting.add(words);
            continue;
        }
        if (brace != line.begin())
            nesting.add(Line(line.begin(), brace));
        for (const Word& word : line)
            if (word.is("{"))
                nesting.open();
            else if (word.is("}"))
                nesting.close();
    }
    if (why.empty())
        why = nesting.complaint();
    return lines;
}

} // namespace standin
