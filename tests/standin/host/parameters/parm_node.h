#pragma once
#include <CH/CH_Manager.h>
#include <OP/OP_Parameters.h>
#include <PRM/PRM_Include.h>
#include <UT/UT_StringArray.h>

#include <map>
#include <set>
#include <string>
#include <vector>

/// A node that is nothing but parameters, and notes what it hears.
class ParmNode : public OP_Parameters
{
public:
    explicit ParmNode(PRM_Template* templates, const char* name = "node")
    {
        setNameText(name);
        buildParms(templates);
    }

    using OP_Parameters::updateParmDisableConditional;
    using OP_Parameters::updateParmHideConditional;

    std::string text(const char* parm, int component = 0, fpreal time = 0) const
    {
        UT_String value;
        evalString(value, parm, component, time);
        return value.toStdString();
    }
    std::string raw(const char* parm) const
    {
        UT_String value;
        evalStringRaw(value, parm, 0, 0);
        return value.toStdString();
    }
    /// Tokens of all parameters in order.
    std::vector<std::string> tokens() const
    {
        std::vector<std::string> all;
        for (int i = 0; i < getNumParms(); ++i)
            all.push_back(getParm(i).getToken());
        return all;
    }
    std::string errors() const
    {
        UT_StringArray list;
        getParmErrors(list);
        std::string joined;
        for (const UT_StringHolder& sentence : list)
            joined += sentence.toStdString() + "\n";
        return joined;
    }

    void parmChanged(int index) override { changes.push_back(index); }
    int connectedInputCount() const override { return static_cast<int>(connected.size()); }
    bool isInputConnected(int index) const override { return connected.count(index) != 0; }

    std::vector<int> changes;
    std::set<int> connected;
    std::map<std::string, OP_Parameters*> others;

protected:
    OP_Parameters* findRelative(const char* path) override
    {
        const auto found = others.find(path);
        return found == others.end() ? OP_Parameters::findRelative(path) : found->second;
    }
};

typedef std::vector<std::string> Texts;
typedef std::vector<int> Ints;
