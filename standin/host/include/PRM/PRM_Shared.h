#pragma once
#include <PRM/PRM_ChoiceList.h>
#include <PRM/PRM_Default.h>

// Shared defaults: sixteen entries of one number each.
extern PRM_Default PRMzeroDefaults[];
extern PRM_Default PRMoneDefaults[];
extern PRM_Default PRMtwoDefaults[];
extern PRM_Default PRMthreeDefaults[];

/// Menu of a ramp key's interpolation, in the order of PRM_RampInterpType.
PRM_ChoiceList* PRMgetRampInterpMenu();
