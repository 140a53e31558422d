// Keys that are not read, or not as they were meant.
#include "known_keys.h"
#include "rules.h"

#include "../text.h"

#include <fmt/format.h>

#include <cstdlib>
#include <functional>

namespace kshop
{

namespace
{

bool startsWith(const std::string& text, const std::string& start)
{
    return text.compare(0, start.size(), start) == 0;
}

bool isExtraKey(const std::string& name)
{
    return name == "houdini.parm" || startsWith(name, "houdini.parm.");
}

/// The key's row; also for a continuation piece of a text, which `isPiece` then tells.
const KnownKey* rowOf(KeyOwner owner, const std::string& name, bool& isPiece)
{
    isPiece = false;
    if (const KnownKey* row = findKnownKey(owner, name))
        return row;
    std::string base, digits;
    const KnownKey* row = splitContinuation(name, base, digits) ? findKnownKey(owner, base) : nullptr;
    isPiece = row && row->type == KR_TYPE_STRING;
    return isPiece ? row : nullptr;
}

/// Goes through the keys of a shader and of its parameters.
void forEachKey(
    const Shader& shader,
    const std::function<void(KeyOwner, const std::string& parameter, const Keys&, const Key&)>& visit)
{
    for (const Key& key : shader.keys)
        if (!isExtraKey(key.name))
            visit(KeyOwner::Shader, "", shader.keys, key);
    for (const Parameter& parameter : shader.parameters)
        for (const Key& key : parameter.keys)
            visit(KeyOwner::Parameter, parameter.name, parameter.keys, key);
}

KeyOwner otherOwner(KeyOwner owner)
{
    return owner == KeyOwner::Shader ? KeyOwner::Parameter : KeyOwner::Shader;
}

void checkUnknown(const Shader& shader, Report& report)
{
    forEachKey(shader,
               [&](KeyOwner owner, const std::string& parameter, const Keys&, const Key& key)
               {
                   bool isPiece = false;
                   if (!startsWith(key.name, "houdini.") || isExtraKey(key.name) ||
                       rowOf(owner, key.name, isPiece) || rowOf(otherOwner(owner), key.name, isPiece))
                       return;
                   report.add(key.place, parameter,
                              {"nobody reads the key " + quoted(key.name) +
                                   suggestion(key.name, knownKeyNames(owner)),
                               "It changes nothing.", "Correct the name, or take the line away."});
               });
}

void checkOwner(const Shader& shader, Report& report)
{
    forEachKey(shader,
               [&](KeyOwner owner, const std::string& parameter, const Keys&, const Key& key)
               {
                   bool isPiece = false;
                   if (!startsWith(key.name, "houdini.") || rowOf(owner, key.name, isPiece))
                       return;
                   const bool known = isExtraKey(key.name) || rowOf(otherOwner(owner), key.name, isPiece);
                   if (!known)
                       return;
                   const bool onShader = owner == KeyOwner::Shader;
                   report.add(key.place, parameter,
                              {fmt::format("{} is a key of {}", quoted(key.name),
                                           onShader ? "parameters" : "shaders"),
                               "Here nobody reads it, and it changes nothing.",
                               onShader ? "Write it below a line [\"ENTRY\".parameters.NAME]."
                                        : "Write it below the shader's own line [\"ENTRY\"]."});
               });
}

std::string exampleOf(const KnownKey& row)
{
    if (row.type == KR_TYPE_BOOLEAN)
        return "Write true or false without quotes.";
    return row.type == KR_TYPE_FLOAT ? "Write a number without quotes." : "Write the text in quotes.";
}

Words wrongType(const Key& key, const KnownKey& row)
{
    return {fmt::format("the value of {} is {}, and {} belongs there", quoted(key.name), kindWord(key.type),
                        kindWord(row.type)),
            fmt::format("The key counts as absent: {}.", row.absent), exampleOf(row)};
}

/// The last word of houdini.parm.KIND.NAME.WORD; empty for any other key.
std::string subKeyOf(const std::string& name)
{
    const std::vector<std::string> words = splitText(name, '.', false);
    return words.size() == 5 && isExtraKey(name) ? words[4] : "";
}

void checkExtraType(const Key& key, Report& report)
{
    const std::vector<std::string> words = splitText(key.name, '.', false);
    bool isPiece = false;
    const KnownKey* row = words.size() == 5 ? rowOf(KeyOwner::Extra, words[4], isPiece) : nullptr;
    if (row && row->type != key.type)
        report.add(key.place, words[3], wrongType(key, *row));
    else if (words.size() == 4 && key.type != KR_TYPE_STRING)
        report.add(key.place, words[3],
                   {fmt::format("the value of {} is {}, and a text belongs there", quoted(key.name),
                                kindWord(key.type)),
                    "The extra parameter is made as if the text were empty.", "Write the text in quotes."});
}

void checkType(const Shader& shader, Report& report)
{
    for (const Key& key : shader.keys)
        if (isExtraKey(key.name))
            checkExtraType(key, report);
    forEachKey(shader,
               [&](KeyOwner owner, const std::string& parameter, const Keys&, const Key& key)
               {
                   bool isPiece = false;
                   const KnownKey* row = rowOf(owner, key.name, isPiece);
                   if (row && row->type != key.type)
                       report.add(key.place, parameter, wrongType(key, *row));
               });
}

/// Why a continuation piece is never read; empty when it is.
std::string whyUnread(const Keys& keys, const std::string& base, const std::string& digits)
{
    const long number = std::strtol(digits.c_str(), nullptr, 10);
    if (digits[0] == '0' || number < 2)
        return "continuation keys are numbered 2, 3, 4 and so on";
    if (digits.size() > 2)
        return "the last continuation key is number 99";
    if (!keys.findText(base))
        return "there is no text " + quoted(base) + " that it could continue";
    for (long piece = 2; piece < number; ++piece)
        if (!keys.findText(base + std::to_string(piece)))
            return fmt::format("there is no text {}, and a gap ends the text",
                               quoted(base + std::to_string(piece)));
    return "";
}

void checkGap(const Keys& keys, const Key& key, const std::string& parameter, Report& report)
{
    std::string base, digits;
    splitContinuation(key.name, base, digits);
    const std::string why = whyUnread(keys, base, digits);
    if (!why.empty())
        report.add(key.place, parameter,
                   {fmt::format("{} is never read: {}", quoted(key.name), why),
                    "Its part of the text is missing.",
                    "Number the pieces without a gap: " + base + ", " + base + "2, " + base + "3."});
}

void checkGaps(const Shader& shader, Report& report)
{
    for (const Key& key : shader.keys)
    {
        bool isPiece = false;
        const std::string word = subKeyOf(key.name);
        if (!word.empty() && rowOf(KeyOwner::Extra, word, isPiece) && isPiece)
            checkGap(shader.keys, key, splitText(key.name, '.', false)[3], report);
    }
    forEachKey(shader,
               [&](KeyOwner owner, const std::string& parameter, const Keys& keys, const Key& key)
               {
                   bool isPiece = false;
                   if (rowOf(owner, key.name, isPiece) && isPiece)
                       checkGap(keys, key, parameter, report);
               });
}

void checkEmpty(const Keys& keys, const Key& key, const KnownKey* row, const std::string& parameter,
                Report& report)
{
    if (row && row->type == KR_TYPE_STRING && key.type == KR_TYPE_STRING && keys.joined(key.name).empty())
        report.add(key.place, parameter,
                   {fmt::format("the text of {} is empty", quoted(key.name)),
                    fmt::format("An empty text counts as absent: {}.", row->absent),
                    "Write the text, or take the line away."});
}

void checkEmptyTexts(const Shader& shader, Report& report)
{
    for (const Key& key : shader.keys)
        if (const std::string word = subKeyOf(key.name); !word.empty())
            checkEmpty(shader.keys, key, findKnownKey(KeyOwner::Extra, word),
                       splitText(key.name, '.', false)[3], report);
    forEachKey(shader, [&](KeyOwner owner, const std::string& parameter, const Keys& keys, const Key& key)
               { checkEmpty(keys, key, findKnownKey(owner, key.name), parameter, report); });
}

} // namespace

const std::vector<Rule>& keyRules()
{
    static const std::vector<Rule> rules = {
        {"unknown-key", "warning", "a \"houdini.\" key that nobody reads", checkUnknown, nullptr},
        {"misplaced-key", "warning", "a shader's key on a parameter, or a parameter's on a shader",
         checkOwner, nullptr},
        {"wrong-type", "error", "a value of another kind than the key has", checkType, nullptr},
        {"continuation-gap", "warning", "a continuation key that is never read", checkGaps, nullptr},
        {"empty-text", "warning", "an empty text, which counts as absent", checkEmptyTexts, nullptr},
    };
    return rules;
}

} // namespace kshop
