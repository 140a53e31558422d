#include "prm/prm_channels.h"

#include <algorithm>

namespace
{
struct SuffixRow
{
    unsigned naming;
    const char* letters;
};

const SuffixRow suffix_rows[] = {
    {PRM_CHAN_NAMES_XYZ, "xyzw"},
    {PRM_CHAN_NAMES_RGBA, "rgba"},
    {PRM_CHAN_NAMES_UVW, "uvw"},
};

int countMarks(const std::string& text)
{
    return static_cast<int>(std::count(text.begin(), text.end(), '#'));
}

UT_IntArray lastOf(const UT_IntArray& indices, int count)
{
    UT_IntArray last;
    for (int i = std::max(static_cast<int>(indices.entries()) - count, 0); i < indices.entries(); ++i)
        last.append(indices(i));
    return last;
}
} // namespace

std::string PRMchannelSuffix(const PRM_Type& type, int vectorSize, int component)
{
    if (vectorSize <= 1)
        return std::string();
    for (const SuffixRow& row : suffix_rows)
    {
        const std::string letters = row.letters;
        const bool named = component >= 0 && component < static_cast<int>(letters.size());
        if (named && type.hasChannelType(row.naming))
            return std::string(1, letters[static_cast<std::size_t>(component)]);
    }
    return std::to_string(component + 1);
}

std::string PRMfillInstances(const std::string& text, const UT_IntArray& indices)
{
    if (indices.isEmpty())
        return text;
    std::string result;
    exint next = 0;
    for (const char c : text)
    {
        if (c != '#')
        {
            result += c;
            continue;
        }
        result += std::to_string(indices(std::min(next, indices.entries() - 1)));
        ++next;
    }
    return result;
}

std::string PRMinstanceToken(const std::string& token, const UT_IntArray& indices)
{
    std::string marked = token;
    if (countMarks(marked) == 0 && !indices.isEmpty())
        marked += '#';
    for (exint missing = indices.entries() - countMarks(marked); missing > 0; --missing)
        marked.insert(marked.find('#'), "#_");
    return PRMfillInstances(marked, indices);
}

std::string PRMinstanceLabel(const std::string& label, const UT_IntArray& indices)
{
    return PRMfillInstances(label, lastOf(indices, countMarks(label)));
}
