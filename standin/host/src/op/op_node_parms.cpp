#include "op_node_parms.h"

#include "op_text.h"

#include <OP/OP_Node.h>
#include <PRM/PRM_Include.h>
#include <SYS/SYS_SequentialThreadIndex.h>

#include <algorithm>

namespace standin
{

namespace
{

/// A folder set has one value, the open tab, and what has no basic type has none.
int valuesOf(const PRM_Parm& parm)
{
    if (parm.isMultiParm() || parm.getType().isSwitcher())
        return 1;
    return parm.getType().getBasicType() == PRM_BASIC_NONE ? 0 : parm.getVectorSize();
}

/// The parameters that can be found again: those that have a token, each token's first.
std::vector<const PRM_Parm*> savedParms(const OP_Node& node)
{
    std::vector<const PRM_Parm*> saved;
    const PRM_ParmList& parms = *node.getParmList();
    for (int i = 0; i < parms.getEntries(); ++i)
        if (valuesOf(*parms.getParmPtr(i)) > 0 && parms.getParmIndex(parms.getParmPtr(i)->getToken()) == i)
            saved.push_back(parms.getParmPtr(i));
    return saved;
}

std::string valueText(const PRM_Parm& parm, int component)
{
    if (parm.isMultiParm())
        return std::to_string(parm.getMultiParmNumItems());
    if (parm.hasExpression(component))
        return "[ " + nameText(parm.getChannelToken(component).toStdString()) + " 0 ]";
    if (parm.getType().isStringType())
    {
        UT_String text;
        parm.getValue(0, text, component, false, SYSgetSTID());
        return quoteText(text.toStdString());
    }
    fpreal number = 0;
    parm.getValue(0, number, component, SYSgetSTID());
    return printNumber(number);
}

// --- reading values ---------------------------------------------------------------------------------------------

std::string channelOf(const PRM_Parm& parm, int component)
{
    return "\"" + parm.getChannelToken(component).toStdString() + "\"";
}

/// Sets one value; a sentence when it is none for the parameter.
std::string setValue(PRM_Parm& parm, int component, const Word& word)
{
    double number = 0;
    fpreal literal = 0;
    bool good = false;
    if (parm.getType().isStringType())
        good = parm.setValue(0, word.text.c_str(), CH_STRING_LITERAL, false, PRM_AK_NEVER, component);
    else if (readNumber(word.text, number))
        good = parm.setValue(0, number, false, PRM_AK_NEVER, component);
    else if (parm.readLiteral(word.text.c_str(), literal))
        good = parm.setValue(0, literal, false, PRM_AK_NEVER, component);
    if (good)
        return std::string();
    return "\"" + word.text + "\" is no value for " + channelOf(parm, component) +
           ", which keeps its default";
}

/// The word behind the ']' that belongs to the '[' at `at`; the line's end when there is none.
std::size_t behindBracket(const Line& line, std::size_t at)
{
    while (at < line.size() && !line[at].is("]"))
        ++at;
    return std::min(at + 1, line.size());
}

/// The first word of the values; the line's end when there are none.
std::size_t beginOfValues(const Line& line)
{
    std::size_t at = 1;
    while (at < line.size() && !line[at].is("("))
        at = line[at].is("[") ? behindBracket(line, at) : at + 1;
    return std::min(at + 1, line.size());
}

void setValues(PRM_Parm& parm, const Line& line, std::vector<std::string>& problems)
{
    const int count = valuesOf(parm);
    std::size_t at = beginOfValues(line);
    int component = 0;
    for (; component < count && at < line.size() && !line[at].is(")"); ++component)
    {
        if (line[at].is("["))
        {
            at = behindBracket(line, at); // an expression, which comes later
            continue;
        }
        const std::string why = setValue(parm, component, line[at]);
        if (!why.empty())
            problems.push_back(why);
        ++at;
    }
    if (component < count)
        problems.push_back("there are values missing for " + channelOf(parm, component));
}

std::string listed(const std::vector<std::string>& names)
{
    const std::size_t shown = std::min<std::size_t>(names.size(), 5);
    std::string text;
    for (std::size_t i = 0; i < shown; ++i)
        text += (i ? ", " : "") + ("\"" + names[i] + "\"");
    return text + (shown < names.size() ? " and " + std::to_string(names.size() - shown) + " more" : "");
}

bool isFrame(const Line& line) { return line[0].is("{") || (line[0].is("version") && line.size() == 2); }

// --- expressions ------------------------------------------------------------------------------------------------

/// What one block of the channel entry says.
struct Channel
{
    std::string name;
    std::string parm; ///< empty in files that only name the channel
    int component = 0;
    bool hasExpression = false;
    std::string expression;
    CH_ExprLanguage language = CH_OLD_EXPR_LANGUAGE;
};

void takePair(Channel& channel, const std::string& key, const std::string& value)
{
    double number = 0;
    if (key == "parm")
        channel.parm = value;
    else if (key == "component" && readNumber(value, number) && number >= 0 && number < 1000)
        channel.component = static_cast<int>(number);
    else if (key == "language")
        channel.language = value == "python" ? CH_PYTHON : CH_OLD_EXPR_LANGUAGE;
    else if (key == "expr")
    {
        channel.expression = value;
        channel.hasExpression = true;
    }
}

/// False when a brace is missing.
bool readBlocks(const std::vector<Word>& words, std::vector<Channel>& channels)
{
    int depth = 0;
    for (std::size_t i = 0; i < words.size(); ++i)
    {
        depth += words[i].is("{");
        depth -= words[i].is("}");
        if (depth == 1 && words[i].is("channel") && i + 1 < words.size())
        {
            channels.emplace_back();
            channels.back().name = words[++i].text;
        }
        else if (depth > 1 && !channels.empty() && i + 2 < words.size() && words[i + 1].is("="))
        {
            takePair(channels.back(), words[i].text, words[i + 2].text);
            i += 2;
        }
    }
    return depth == 0;
}

bool setExpression(OP_Node& node, const Channel& channel)
{
    int component = channel.component;
    PRM_Parm* parm = channel.parm.empty()
                         ? node.getParmList()->getParmPtrFromChannel(channel.name.c_str(), &component)
                         : node.getParmPtr(channel.parm.c_str());
    return parm && parm->setExpression(0, channel.expression.c_str(), channel.language, false, component);
}

} // namespace

std::string writeParms(const OP_Node& node)
{
    std::string text = "{\nversion 0.8\n";
    for (const PRM_Parm* parm : savedParms(node))
    {
        text += nameText(parm->getToken()) + " \t[ 0 \tlocks=0 ] \t(";
        for (int i = 0; i < valuesOf(*parm); ++i)
            text += " \t" + valueText(*parm, i);
        text += " )\n";
    }
    return text + "}\n";
}

std::string writeChannels(const OP_Node& node)
{
    std::string text;
    for (const PRM_Parm* parm : savedParms(node))
        for (int i = 0; i < valuesOf(*parm); ++i)
            if (parm->hasExpression(i))
                text += "    channel " + nameText(parm->getChannelToken(i).toStdString()) +
                        " {\n        parm = " + quoteText(parm->getToken()) +
                        "\n        component = " + std::to_string(i) + "\n        segment { language = " +
                        (parm->getExpressionLanguage(i) == CH_PYTHON ? "python" : "hscript") +
                        " expr = " + quoteText(parm->getExpression(i)) + " }\n    }\n";
    return text.empty() ? text : "{\n" + text + "}\n";
}

void readParms(OP_Node& node, const std::string& text, std::vector<std::string>& problems)
{
    std::string why;
    std::vector<std::string> unknown;
    bool ended = false;
    for (const Line& line : readLines(text, why))
    {
        PRM_Parm* parm = node.getParmPtr(line[0].text.c_str());
        ended = line[0].is("}");
        if (ended || isFrame(line))
            continue;
        if (parm)
            setValues(*parm, line, problems);
        else
            unknown.push_back(line[0].text);
    }
    if (!unknown.empty())
        problems.push_back("its type has no parameter " + listed(unknown) + " any more");
    if (!why.empty())
        problems.push_back(why);
    else if (!ended)
        problems.push_back("the values of its parameters are cut off");
}

void readChannels(OP_Node& node, const std::string& text, std::vector<std::string>& problems)
{
    std::string why;
    std::vector<Word> words;
    for (const Line& line : readLines(text, why))
        words.insert(words.end(), line.begin(), line.end());
    std::vector<Channel> channels;
    if (!readBlocks(words, channels) && why.empty())
        why = "the expressions of its parameters are cut off";
    for (const Channel& channel : channels)
        if (channel.hasExpression && !setExpression(node, channel))
            problems.push_back("its type has no parameter for the expression of \"" + channel.name + "\"");
    if (!why.empty())
        problems.push_back(why);
}

} // namespace standin
