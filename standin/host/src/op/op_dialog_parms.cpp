#include "op_dialog_parms.h"

#include <algorithm>
#include <deque>
#include <memory>
#include <set>

namespace standin
{

namespace
{

constexpr int most_components = 64;
const char* const python_word = "python"; // behind an expression or a menu's script; hscript without it

// The first row of a word, and the first of a type, is the one that counts.
const DialogKind kind_rows[] = {
    {"float", &PRM_FLT},
    {"integer", &PRM_INT},
    {"toggle", &PRM_TOGGLE},
    {"ordinal", &PRM_ORD},
    {"string", &PRM_STRING},
    {"color", &PRM_RGB},
    {"color4", &PRM_RGBA},
    {"vector", &PRM_XYZ},
    {"uvw", &PRM_UVW},
    {"file", &PRM_FILE},
    {"image", &PRM_PICFILE},
    {"geometry", &PRM_GEOFILE},
    {"directory", &PRM_DIRECTORY},
    {"oppath", &PRM_STRING_OPREF},
    {"oplist", &PRM_STRING_OPLIST},
    {"button", &PRM_CALLBACK},
    {"label", &PRM_LABEL},
    {"separator", &PRM_SEPARATOR},
    {"angle", &PRM_FLT},
    {"logfloat", &PRM_FLT},
    {"direction", &PRM_XYZ},
    {"vector2", &PRM_FLT},
    {"vector4", &PRM_FLT},
    {"intvector", &PRM_INT},
    {"intvector2", &PRM_INT},
    {"log", &PRM_FLT},
    {"time", &PRM_FLT},
};

struct MultiKind
{
    const char* word;
    PRM_MultiType type;
};

const MultiKind multi_rows[] = {
    {"multiparm", PRM_MULTITYPE_LIST},
    {"ramp_flt", PRM_MULTITYPE_RAMP_FLT},
    {"ramp_rgb", PRM_MULTITYPE_RAMP_RGB},
};

/// What templates point to. Made once per script and never freed, as the host's templates are.
struct Kept
{
    std::deque<std::string> texts;
    std::deque<PRM_Name> names;
    std::deque<std::vector<PRM_Default>> defaults;
    std::deque<PRM_Range> ranges;
    std::deque<std::vector<PRM_Name>> items;
    std::deque<PRM_ChoiceList> menus;
    std::deque<PRM_SpareData> spares;
    std::deque<PRM_ConditionalGroup> conditions;
    std::deque<std::vector<PRM_Template>> lists;

    const char* keep(const std::string& text)
    {
        texts.push_back(text);
        return texts.back().c_str();
    }
};

int wholeNumber(const std::string& word, int lowest, int highest)
{
    double value = 0;
    readNumber(word, value);
    return value >= lowest && value <= highest ? static_cast<int>(value) : lowest;
}

const DialogLine* find(const DialogLine& block, const char* key)
{
    const auto found = std::find_if(block.inside.begin(), block.inside.end(),
                                    [&](const DialogLine& line) { return line.is(key); });
    return found == block.inside.end() ? nullptr : &*found;
}

std::string textIn(const DialogLine& block, const char* key)
{
    const DialogLine* line = find(block, key);
    return line ? line->word(1) : std::string();
}

/// The words between a line's braces, whether they stand on the line itself or below it.
Line wordsIn(const DialogLine& line)
{
    Line words(line.words.empty() ? line.words.end() : line.words.begin() + 1, line.words.end());
    for (const DialogLine& inner : line.inside)
        words.insert(words.end(), inner.words.begin(), inner.words.end());
    return words;
}

/// Makes the templates of one script.
class Maker
{
public:
    Maker(Kept& kept, std::vector<std::string>& problems) : m_kept(kept), m_problems(problems) {}

    std::vector<PRM_Template> list(const std::vector<DialogLine>& lines)
    {
        std::vector<PRM_Template> templates;
        for (std::size_t i = 0; i < lines.size(); ++i)
            if (lines[i].is("parm"))
                add(templates, lines[i]);
            else if (isMulti(lines[i]))
                addMulti(templates, lines[i]);
            else if (lines[i].is("group"))
                i = addTabs(templates, lines, i) - 1;
        return templates;
    }

private:
    /// In real scripts a multi-parameter is a block of its own word; its kind stands in "type".
    static bool isMulti(const DialogLine& line) { return line.is("multiparm"); }

    bool takeName(const std::string& name)
    {
        if (!name.empty() && m_names.insert(name).second)
            return true;
        m_problems.push_back(name.empty() ? "a parameter without a name is left out"
                                          : "the second parameter \"" + name + "\" is left out");
        return false;
    }

    void add(std::vector<PRM_Template>& templates, const DialogLine& block)
    {
        const std::string type = textIn(block, "type");
        for (const MultiKind& row : multi_rows)
            if (type == row.word)
                return addMulti(templates, block);
        const DialogKind* kind = findDialogKind(type);
        const std::string name = textIn(block, "name");
        if (!kind)
            m_problems.push_back("the parameter \"" + name + "\" of the kind \"" + type +
                                 "\", which is not known here, is left out");
        else if (takeName(name))
            templates.push_back(plain(block, *kind));
    }

    PRM_Template plain(const DialogLine& block, const DialogKind& kind)
    {
        const int size = find(block, "size") ? wholeNumber(textIn(block, "size"), 1, most_components) : 1;
        PRM_ChoiceList* choices = menu(block);
        const std::string help = textIn(block, "help");
        PRM_Template made(*kind.type, size, name(block), defaults(block, kind, size, choices), choices,
                          range(block), PRM_Callback(), spare(block), 1,
                          help.empty() ? nullptr : m_kept.keep(help), condition(block));
        made.setInvisible(find(block, "invisible") != nullptr);
        made.setJoinNext(find(block, "joinnext") != nullptr);
        made.setLabelNone(find(block, "nolabel") != nullptr);
        return made;
    }

    void addMulti(std::vector<PRM_Template>& templates, const DialogLine& block)
    {
        PRM_MultiType type = PRM_MULTITYPE_LIST;
        for (const MultiKind& row : multi_rows)
            if (textIn(block, "type") == row.word)
                type = row.type;
        if (!takeName(textIn(block, "name")))
            return;
        PRM_Template* children = nullptr;
        if (type == PRM_MULTITYPE_LIST)
            children = keepList(list(block.inside));
        const DialogLine* count = find(block, "default");
        m_kept.defaults.push_back({PRM_Default(count ? wholeNumber(count->word(1), 0, 1 << 16) : 0)});
        templates.push_back(PRM_Template(type, children, 1, name(block), m_kept.defaults.back().data(),
                                         range(block), spare(block), nullptr, condition(block)));
    }

    /// Takes all groups from `first` on that follow each other, and returns the place behind them.
    std::size_t addTabs(std::vector<PRM_Template>& templates, const std::vector<DialogLine>& lines,
                        std::size_t first)
    {
        std::vector<PRM_Default> tabs;
        std::vector<PRM_Template> inside;
        std::size_t next = first;
        for (; next < lines.size() && lines[next].is("group"); ++next)
        {
            const std::vector<PRM_Template> entries = list(lines[next].inside);
            std::vector<PRM_Template> ended = entries;
            ended.push_back(PRM_Template());
            tabs.push_back(PRM_Default(PRM_Template::countTemplates(ended.data(), true),
                                       m_kept.keep(textIn(lines[next], "label"))));
            inside.insert(inside.end(), entries.begin(), entries.end());
        }
        m_kept.defaults.push_back(tabs);
        templates.push_back(PRM_Template(PRM_SWITCHER, static_cast<int>(tabs.size()), name(lines[first]),
                                         m_kept.defaults.back().data()));
        templates.insert(templates.end(), inside.begin(), inside.end());
        return next;
    }

public:
    PRM_Template* keepList(std::vector<PRM_Template> templates)
    {
        templates.push_back(PRM_Template());
        m_kept.lists.push_back(std::move(templates));
        return m_kept.lists.back().data();
    }

private:
    PRM_Name* name(const DialogLine& block)
    {
        const DialogLine* label = find(block, "label");
        const char* token = m_kept.keep(textIn(block, "name"));
        m_kept.names.push_back(PRM_Name(token, label ? m_kept.keep(label->word(1)) : token));
        return &m_kept.names.back();
    }

    /// `default { "1" [ "expression" language ] }`.
    PRM_Default* defaults(const DialogLine& block, const DialogKind& kind, int size,
                          const PRM_ChoiceList* choices)
    {
        const DialogLine* line = find(block, "default");
        const Line words = line ? wordsIn(*line) : Line();
        std::vector<PRM_Default> made;
        const bool isText = kind.type->getBasicType() == PRM_BASIC_STRING;
        for (std::size_t i = 0; i < words.size(); ++i)
        {
            if (!words[i].is("["))
                made.push_back(literal(words[i].text, isText, choices));
            else
            {
                const auto end = std::find_if(words.begin() + static_cast<long>(i), words.end(),
                                              [](const Word& word) { return word.is("]"); });
                const std::size_t past = static_cast<std::size_t>(end - words.begin());
                const bool isPython = past > i + 2 && words[past - 1].is(python_word);
                if (past > i + 1)
                    made.push_back(PRM_Default(0, m_kept.keep(words[i + 1].text),
                                               isPython ? CH_PYTHON_EXPRESSION : CH_OLD_EXPRESSION));
                i = past;
            }
        }
        made.resize(static_cast<std::size_t>(size), isText ? PRM_Default(0, "") : PRM_Default(0));
        m_kept.defaults.push_back(made);
        return m_kept.defaults.back().data();
    }

    /// The default of a menu may be the token of an item.
    PRM_Default literal(const std::string& word, bool isText, const PRM_ChoiceList* choices)
    {
        double number = 0;
        if (isText)
            return PRM_Default(0, m_kept.keep(word));
        if (readNumber(word, number))
            return PRM_Default(number);
        const PRM_Name* items = choices ? choices->choiceNamesPtr() : nullptr;
        for (int i = 0; items && items[i].getToken(); ++i)
            if (word == items[i].getToken())
                return PRM_Default(i);
        return PRM_Default(0);
    }

    /// `range { 0! 10 }`: an end with '!' cannot be passed.
    PRM_Range* range(const DialogLine& block)
    {
        const DialogLine* line = find(block, "range");
        if (!line || wordsIn(*line).size() < 2)
            return nullptr;
        const Line words = wordsIn(*line);
        double ends[2] = {0, 0};
        PRM_RangeFlag flags[2] = {PRM_RANGE_UI, PRM_RANGE_UI};
        for (std::size_t i = 0; i < 2; ++i)
        {
            std::string word = words[i].text;
            if (!word.empty() && word.back() == '!')
            {
                flags[i] = PRM_RANGE_RESTRICTED;
                word.pop_back();
            }
            readNumber(word, ends[i]);
        }
        m_kept.ranges.push_back(PRM_Range(flags[0], ends[0], flags[1], ends[1]));
        return &m_kept.ranges.back();
    }

    struct MenuRow
    {
        const char* word;
        PRM_ChoiceListType type;
    };

    PRM_ChoiceList* menu(const DialogLine& block)
    {
        static const MenuRow menu_rows[] = {{"menu", PRM_CHOICELIST_SINGLE},
                                            {"menureplace", PRM_CHOICELIST_REPLACE},
                                            {"menutoggle", PRM_CHOICELIST_TOGGLE}};
        for (const MenuRow& row : menu_rows)
            if (const DialogLine* line = find(block, row.word))
                return menu(wordsIn(*line), row.type);
        return nullptr;
    }

    PRM_ChoiceList* menu(const Line& words, PRM_ChoiceListType type)
    {
        if (!words.empty() && words[0].is("["))
            return scriptMenu(words, type);
        std::vector<PRM_Name> items;
        for (std::size_t i = 0; i + 1 < words.size(); i += 2)
            items.push_back(PRM_Name(m_kept.keep(words[i].text), m_kept.keep(words[i + 1].text)));
        items.push_back(PRM_Name());
        m_kept.items.push_back(items);
        m_kept.menus.emplace_back(type, m_kept.items.back().data());
        return &m_kept.menus.back();
    }

    /// `menu { [ "line" ] [ "line" ] language python }`.
    PRM_ChoiceList* scriptMenu(const Line& words, PRM_ChoiceListType type)
    {
        std::string script;
        CH_ScriptLanguage language = CH_HSCRIPT;
        for (std::size_t i = 0; i + 1 < words.size(); ++i)
            if (words[i].is("["))
                script += (script.empty() ? "" : "\n") + words[i + 1].text;
            else if (words[i].is("language") && words[i + 1].text == python_word)
                language = CH_PYTHON_SCRIPT;
        m_kept.menus.emplace_back(type, m_kept.keep(script), language);
        return &m_kept.menus.back();
    }

    /// `parmtag { "name" "value" }`.
    PRM_SpareData* spare(const DialogLine& block)
    {
        m_kept.spares.emplace_back();
        for (const DialogLine& line : block.inside)
        {
            const Line words = line.is("parmtag") ? wordsIn(line) : Line();
            if (words.size() >= 2)
                m_kept.spares.back().addTokenValue(UT_StringRef(words[0].text), words[1].text.c_str());
        }
        return &m_kept.spares.back();
    }

    PRM_ConditionalBase* condition(const DialogLine& block)
    {
        const std::string disable = textIn(block, "disablewhen");
        const std::string hide = textIn(block, "hidewhen");
        if (disable.empty() && hide.empty())
            return nullptr;
        m_kept.conditions.emplace_back();
        if (!disable.empty())
            m_kept.conditions.back().addConditional(disable.c_str(), PRM_CONDTYPE_DISABLE);
        if (!hide.empty())
            m_kept.conditions.back().addConditional(hide.c_str(), PRM_CONDTYPE_HIDE);
        return &m_kept.conditions.back();
    }

    Kept& m_kept;
    std::vector<std::string>& m_problems;
    std::set<std::string> m_names;
};

/// Templates of types are never freed; going through here keeps them findable.
Kept& newKept()
{
    static auto* all = new std::vector<std::unique_ptr<Kept>>;
    all->push_back(std::unique_ptr<Kept>(new Kept));
    return *all->back();
}

} // namespace

const DialogKind* findDialogKind(const std::string& word)
{
    for (const DialogKind& row : kind_rows)
        if (word == row.word)
            return &row;
    return nullptr;
}

const DialogKind* findDialogKind(const PRM_Type& type)
{
    const PRM_Type kind = type.withInterfaceFlag(PRM_IFACE_FLAGS, false);
    for (const DialogKind& row : kind_rows)
        if (kind == *row.type)
            return &row;
    return nullptr;
}

PRM_Template* makeDialogTemplates(const std::vector<DialogLine>& lines, std::vector<std::string>& problems)
{
    Maker maker(newKept(), problems);
    return maker.keepList(maker.list(lines));
}

} // namespace standin
