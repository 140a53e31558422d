#pragma once
// What a parameter consists of inside.
#include <CH/CH_Expression.h>
#include <PRM/PRM_Parm.h>

#include <memory>
#include <string>

/// Value of one component: a number of a numeric kind, a text of a string kind, or an expression.
struct PRM_Parm::Component
{
    bool isExpression = false;
    CH_ExprLanguage language = CH_OLD_EXPR_LANGUAGE;
    fpreal number = 0;
    std::string text;                            ///< the text, or the expression's source
    std::shared_ptr<const CH_Expression> parsed; ///< of an hscript expression

    bool operator==(const Component& other) const
    {
        return isExpression == other.isExpression && text == other.text && number == other.number &&
               language == other.language;
    }
};

/// The templates of one key of a ramp, made for the ramp's own token.
struct PRM_Parm::RampTemplates
{
    explicit RampTemplates(const PRM_Template& ramp);

    PRM_Template templates[PRM_RAMP_NUM_PARMS + 1];
    PRM_Name names[PRM_RAMP_NUM_PARMS];
    std::string tokens[PRM_RAMP_NUM_PARMS];
};

/// More instances than this are refused: a slip of the finger must not eat the machine.
const int PRM_MAX_INSTANCES = 100000;
