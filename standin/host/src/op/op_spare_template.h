#ifndef STANDIN_OP_SPARE_TEMPLATE_H
#define STANDIN_OP_SPARE_TEMPLATE_H

#include <PRM/PRM_Include.h>

#include <deque>
#include <memory>
#include <string>
#include <vector>

/// @file
/// Templates of spare parameters: made while the program runs, written to and read from scenes.

class OP_Node;

namespace standin
{

/// A spare parameter's template with all that it points to.
struct SpareTemplate
{
    std::deque<std::string> texts; ///< addresses stay
    PRM_Name name;
    std::vector<PRM_Default> defaults;
    PRM_Range range;
    std::vector<PRM_Name> items;
    std::unique_ptr<PRM_ChoiceList> menu;
    PRM_SpareData spare;
    PRM_ConditionalGroup conditions;
    PRM_Template templates[2]; ///< the second ends the list

    const char* keep(const std::string& text)
    {
        texts.push_back(text);
        return texts.back().c_str();
    }
};

/// Keeps a finished template for the process and returns it, with the end of its list behind it. One that is equal to another
/// that is kept is thrown away, and the other is returned.
///
/// Parameters keep pointers into their templates for as long as their node lives, and a template may be asked for after that
/// by whoever copied it. Scenes that are loaded over and over must not fill the memory all the same.
PRM_Template* keepSpareTemplate(std::unique_ptr<SpareTemplate> made);

/// The ".spareparmdef" entry of a node: one block for each spare parameter, in order. Empty when it has none.
std::string writeSpareParms(const OP_Node& node);

/// Adds the spare parameters of such an entry to a node. Those whose token is taken already are left out silently. What
/// cannot be understood is left out with a sentence in `problems`.
void readSpareParms(OP_Node& node, const std::string& text, std::vector<std::string>& problems);

} // namespace standin

#endif
