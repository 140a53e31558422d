#pragma once
#include <PRM/PRM_Type.h>
#include <UT/UT_IntArray.h>

#include <string>

/// What a component's channel name adds to the token: nothing for a single component, else a letter or a number from 1.
std::string PRMchannelSuffix(const PRM_Type& type, int vectorSize, int component);

/// Token of a parameter inside multi-parameters: the instance numbers, the outermost first, in place of '#'. Missing
/// leading '#' are added ("p#" two levels deep means "p#_#"); without any, the numbers follow the token.
std::string PRMinstanceToken(const std::string& token, const UT_IntArray& indices);
/// Label of such a parameter. Fewer '#' than numbers take the last ones.
std::string PRMinstanceLabel(const std::string& label, const UT_IntArray& indices);
/// Puts the numbers in place of '#', the first one first. Further '#' get the last number.
std::string PRMfillInstances(const std::string& text, const UT_IntArray& indices);
