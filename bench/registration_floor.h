#ifndef REGISTRATION_FLOOR_H
#define REGISTRATION_FLOOR_H

namespace bench
{

/// The least that any description of the shaders must do: goes through all entries and parameters of the running
/// renderer and asks each metadata question of a registration once, building nothing. Returns the number of answers, so
/// that nothing can be left out as unused.
long askEveryQuestionOnce();

} // namespace bench

#endif
