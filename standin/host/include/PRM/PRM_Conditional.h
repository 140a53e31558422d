#pragma once
#include <PRM/PRM_ConditionalType.h>
#include <SYS/SYS_Types.h>
#include <UT/UT_String.h>

#include <memory>
#include <string>
#include <vector>

class PRM_Conditional;
class PRM_Parm;
class PRM_ParmList;
class UT_IntArray;
class UT_StringArray;

enum PRM_ConditionalGroupType
{
    PRM_CONDGROUP_NONE = 0,
    PRM_CONDGROUP_SINGLE = 1,
    PRM_CONDGROUP_SWITCHER = 2
};

enum PRM_ConditionalOperator
{
    PRM_CONDOP_EQ = 0,
    PRM_CONDOP_NE = 1,
    PRM_CONDOP_GE = 2,
    PRM_CONDOP_LE = 3,
    PRM_CONDOP_GT = 4,
    PRM_CONDOP_LT = 5,
    PRM_CONDOP_REGEX_EQ = 6,
    PRM_CONDOP_REGEX_NE = 7
};

/// When to disable or hide a parameter.
class PRM_ConditionalBase
{
public:
    virtual ~PRM_ConditionalBase();
    virtual PRM_ConditionalGroupType groupType() const = 0;
    /// A copy for one instance of a multi-parameter, each '#' replaced by its number; the caller deletes it.
    virtual PRM_ConditionalBase* instance(const UT_IntArray& indices) const = 0;
    /// The condition of one type; null when there is none. Belongs to this object.
    virtual PRM_Conditional* getConditional(PRM_ConditionalType type) = 0;
    virtual const PRM_Conditional* getConditional(PRM_ConditionalType type) const = 0;
    virtual int64 getMemoryUsage(bool inclusive) const = 0;
};

/// One comparison of a condition.
struct PRM_ConditionalTerm
{
    std::string subject; ///< parameter, channel or function call, as written
    PRM_ConditionalOperator op;
    std::string value;
    bool quoted; ///< the value stood in double quotes
    int group;   ///< number of its pair of braces, from 0
};

/// One condition: { parm op value  parm op value } { parm op value }.
///
/// Terms inside a pair of braces must all hold, and one pair that holds is enough. Operators are == != < > <=
/// >= and the shell-like pattern matches =~ !~ (* ? [a-z]), with blanks on both sides. A value is a word or a
/// text in double quotes. Functions in place of a parameter: ninputs(), hasinput(n), isparm(name). A text
/// without braces is one group. A malformed text has no entries and never applies; the text is kept as given
/// all the same.
class PRM_Conditional : public PRM_ConditionalBase
{
public:
    explicit PRM_Conditional(PRM_ConditionalType type = PRM_CONDTYPE_DISABLE);
    PRM_Conditional(const char* text, PRM_ConditionalType type = PRM_CONDTYPE_DISABLE);

    PRM_ConditionalGroupType groupType() const;
    PRM_ConditionalBase* instance(const UT_IntArray& indices) const;
    PRM_Conditional* getConditional(PRM_ConditionalType type);
    const PRM_Conditional* getConditional(PRM_ConditionalType type) const;
    int64 getMemoryUsage(bool inclusive) const;

    PRM_ConditionalType getType() const { return m_type; }
    int entries() const { return static_cast<int>(m_terms.size()); }
    const PRM_ConditionalTerm& operator()(int index) const
    {
        return m_terms[static_cast<std::size_t>(index)];
    }
    /// False, with a sentence in `error`, for a malformed text.
    bool setListFromString(const char* text, UT_String& error);
    /// The text as it was given.
    bool getStringFromList(UT_String& text) const;
    /// Whether the condition holds for `parm` now. Terms about parameters named in `skip`, and about
    /// parameters that do not exist, do not hold.
    bool eval(const PRM_Parm& parm, const PRM_ParmList& list, const UT_StringArray* skip) const;

private:
    PRM_ConditionalType m_type;
    std::string m_text;
    std::vector<PRM_ConditionalTerm> m_terms;
};

/// PRM_ConditionalGroupArgs() << PRM_Conditional("{ a == 1 }", PRM_CONDTYPE_HIDE)
class PRM_ConditionalGroupArgs
{
public:
    PRM_ConditionalGroupArgs& operator<<(const PRM_Conditional& conditional)
    {
        m_conditionals.push_back(conditional);
        return *this;
    }
    const std::vector<PRM_Conditional>& getConditionals() const { return m_conditionals; }

private:
    std::vector<PRM_Conditional> m_conditionals;
};

/// At most one condition of each type; a later one replaces an earlier.
class PRM_ConditionalGroup : public PRM_ConditionalBase
{
public:
    PRM_ConditionalGroup();
    explicit PRM_ConditionalGroup(const PRM_ConditionalGroupArgs& args);
    PRM_ConditionalGroup(const PRM_ConditionalGroup& other);
    PRM_ConditionalGroup& operator=(const PRM_ConditionalGroup& other);

    PRM_ConditionalGroupType groupType() const;
    PRM_ConditionalBase* instance(const UT_IntArray& indices) const;
    PRM_Conditional* getConditional(PRM_ConditionalType type);
    const PRM_Conditional* getConditional(PRM_ConditionalType type) const;
    int64 getMemoryUsage(bool inclusive) const;

    void addConditional(const PRM_Conditional& conditional);
    void addConditional(const char* text, PRM_ConditionalType type);
    void clear();

private:
    std::unique_ptr<PRM_Conditional> m_conditionals[NB_PRM_CONDTYPES];
};
