#ifndef KSHOP_PREVIEW_GESTURE_H
#define KSHOP_PREVIEW_GESTURE_H

#include "../interface_json.h"

#include <memory>
#include <string>

class UT_AutoUndoBlock;

namespace kshop
{

/// Consecutive edits that name one gesture, in their member "gesture", are one step of undo: a drag of a slider sends
/// many edits, and a person takes it back as a whole.
class Gesture
{
public:
    Gesture();
    ~Gesture();

    /// To be called before each edit: the gesture under way goes on when the edit names it, and ends otherwise.
    void follow(const Json& edit);

private:
    std::string m_name;
    std::unique_ptr<UT_AutoUndoBlock> m_step; ///< open for as long as the gesture lasts
};

} // namespace kshop

#endif
