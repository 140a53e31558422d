#pragma once

enum PRM_ConditionalType
{
    PRM_CONDTYPE_DISABLE = 0,
    PRM_CONDTYPE_HIDE = 1,
    NB_PRM_CONDTYPES
};
