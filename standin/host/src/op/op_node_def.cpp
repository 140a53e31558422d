#include "op_node_def.h"

#include "op_text.h"

#include <OP/OP_Network.h>
#include <VOP/VOP_Node.h>

#include <algorithm>
#include <cmath>

namespace standin
{

namespace
{

struct FlagRow
{
    const char* name;
    bool (OP_NodeFlags::*get)() const;
    void (OP_NodeFlags::*set)(bool);
};

const FlagRow flag_rows[] = {
    {"lock", &OP_NodeFlags::getHardLock, &OP_NodeFlags::setHardLock},
    {"template", &OP_NodeFlags::getTemplate, &OP_NodeFlags::setTemplate},
    {"bypass", &OP_NodeFlags::getBypass, &OP_NodeFlags::setBypass},
    {"display", &OP_NodeFlags::getDisplay, &OP_NodeFlags::setDisplay},
    {"render", &OP_NodeFlags::getRender, &OP_NodeFlags::setRender},
    {"expose", &OP_NodeFlags::getExpose, &OP_NodeFlags::setExpose},
    {"picked", &OP_NodeFlags::getPicked, &OP_NodeFlags::setPicked},
};

struct DetailRow
{
    const char* name;
    char letter;
};

const DetailRow detail_rows[] = {
    {"lowdetail", VOP_OPT_LOW_FLAG},
    {"mediumdetail", VOP_OPT_MEDIUM_FLAG},
    {"highdetail", VOP_OPT_HIGH_FLAG},
};

// --- writing ----------------------------------------------------------------------------------------------------

std::string flagsText(OP_Node& node)
{
    std::string text = "flags =";
    for (const FlagRow& row : flag_rows)
        text += std::string(" ") + row.name + ((node.flags().*row.get)() ? " on" : " off");
    if (node.castToVOPNode())
        for (const DetailRow& row : detail_rows)
            text += std::string(" ") + row.name + (node.getExtraFlag(row.letter) ? " on" : " off");
    return text + "\n";
}

std::string block(const char* name, const std::string& lines)
{
    return lines.empty() ? std::string() : std::string(name) + "\n{\n" + lines + "}\n";
}

std::string outputsText(OP_Node& node)
{
    std::string lines;
    for (unsigned i = 0; node.castToVOPNode() && i < node.getNumVisibleOutputs(); ++i)
        lines += std::to_string(i) + " " + quoteText(outputNameOf(node, i)) + "\n";
    return block("outputsNamed3", lines);
}

/// Where the wire to `input` of `node` stands among those that leave its source.
int rankOf(const OP_Node& node, unsigned input, const OP_Node& source)
{
    // A node that is fed more than once comes up once for each of its wires.
    unsigned earlier = 0;
    for (unsigned i = 0; i < input; ++i)
        earlier += node.getInput(i) == &source;
    const unsigned count = source.nOutputs();
    for (unsigned i = 0; i < count; ++i)
        if (source.getOutput(i) == &node && earlier-- == 0)
            return static_cast<int>(i);
    return 0;
}

/// One wire, without the end of its line: input, source, output of the source, and a number that is always 1.
std::string wireText(unsigned input, const OP_Node& source, int output)
{
    return std::to_string(input) + " \t" + nameText(source.getName().toStdString()) + " " +
           std::to_string(output) + " 1";
}

std::string wiresText(OP_Node& node)
{
    std::string named;
    std::string plain;
    std::string order;
    for (unsigned i = 0; i < node.nInputs(); ++i)
    {
        const OP_Input* slot = node.getInputReferenceConst(i);
        const OP_Node* source = slot ? slot->getNode() : nullptr;
        if (!source)
            continue;
        const std::string wire = wireText(i, *source, slot->getNodeOutputIndex());
        named += wire + " " + quoteText(inputNameOf(node, i)) + "\n";
        plain += wire + "\n";
        if (source->nOutputs() > 1)
            order += std::to_string(i) + " " + std::to_string(rankOf(node, i, *source)) + "\n";
    }
    return (node.castToVOPNode() ? block("inputsNamed3", named) : std::string()) + block("inputs", plain) +
           block("wireorder", order);
}

// --- reading ----------------------------------------------------------------------------------------------------

/// A whole number from 0 that a connector or place can have; -1 when the word is none.
int wholeNumber(const Line& line, std::size_t i)
{
    double value = -1;
    if (i >= line.size() || !readNumber(line[i].text, value))
        return -1;
    return value >= 0 && value < OP_MULTI_INPUT_MAX ? static_cast<int>(value) : -1;
}

WireDef& wireTo(NodeDef& def, unsigned input)
{
    auto place = std::lower_bound(def.wires.begin(), def.wires.end(), input,
                                  [](const WireDef& wire, unsigned wanted) { return wire.input < wanted; });
    if (place == def.wires.end() || place->input != input)
    {
        place = def.wires.insert(place, WireDef());
        place->input = input;
    }
    return *place;
}

void readOutputName(NodeDef& def, const Line& line)
{
    def.outputNames.emplace_back(wholeNumber(line, 0), line.size() > 1 ? line[1].text : std::string());
}

void readNamedInput(NodeDef& def, const Line& line)
{
    if (line.size() < 2 || line[1].text.empty())
        return;
    WireDef& wire = wireTo(def, static_cast<unsigned>(wholeNumber(line, 0)));
    wire.source = line[1].text;
    wire.outputId = wholeNumber(line, 2);
    if (line.size() > 4)
        wire.inputName = line[4].text;
}

void readInput(NodeDef& def, const Line& line)
{
    if (line.size() < 2 || line[1].text.empty())
        return;
    WireDef& wire = wireTo(def, static_cast<unsigned>(wholeNumber(line, 0)));
    wire.source = line[1].text;
    wire.output = wholeNumber(line, 2);
}

void readRank(NodeDef& def, const Line& line)
{
    wireTo(def, static_cast<unsigned>(wholeNumber(line, 0))).rank = wholeNumber(line, 1);
}

struct BlockRow
{
    const char* name;
    void (*readLine)(NodeDef& def, const Line& line);
};

const BlockRow block_rows[] = {
    {"outputsNamed3", &readOutputName},
    {"inputsNamed3", &readNamedInput},
    {"inputs", &readInput},
    {"wireorder", &readRank},
};

const BlockRow* findBlock(const Line& line)
{
    for (const BlockRow& row : block_rows)
        if (line.size() == 1 && line[0].is(row.name))
            return &row;
    return nullptr;
}

void readFlags(NodeDef& def, const Line& line)
{
    for (std::size_t i = 2; i + 1 < line.size(); i += 2)
        def.flags.emplace_back(line[i].text, line[i + 1].text == "on");
}

bool readPosition(NodeDef& def, const Line& line)
{
    def.hasPosition = line.size() > 2 && readNumber(line[1].text, def.x) && readNumber(line[2].text, def.y);
    return def.hasPosition;
}

} // namespace

int NodeDef::outputOf(int id) const
{
    for (std::size_t i = 0; i < outputNames.size(); ++i)
        if (outputNames[i].first == id)
            return static_cast<int>(i);
    return -1;
}

std::string inputNameOf(OP_Node& node, unsigned index)
{
    UT_String name;
    if (VOP_Node* vop = index < node.getNumVisibleInputs() ? node.castToVOPNode() : nullptr)
        vop->getInputName(name, static_cast<int>(index));
    return name.toStdString();
}

std::string outputNameOf(OP_Node& node, unsigned index)
{
    UT_String name;
    if (VOP_Node* vop = index < node.getNumVisibleOutputs() ? node.castToVOPNode() : nullptr)
        vop->getOutputName(name, static_cast<int>(index));
    return name.toStdString();
}

std::string writeDef(OP_Node& node)
{
    std::string text = "comment \"\"\n";
    text += "position " + printNumber(node.getX()) + " " + printNumber(node.getY()) + "\n";
    text += "connectornextid " + std::to_string(node.getNumVisibleOutputs()) + "\n";
    text += flagsText(node) + outputsText(node) + wiresText(node);
    return text + "exprlanguage hscript\nend\n";
}

NodeDef readDef(const std::string& text, std::vector<std::string>& problems)
{
    NodeDef def;
    std::string why;
    const BlockRow* row = nullptr;
    int depth = 0;
    bool ended = false;
    for (const Line& line : readLines(text, why))
    {
        if (line[0].is("}"))
            --depth;
        else if (line[0].is("{"))
            ++depth;
        else if (depth > 0 && row && wholeNumber(line, 0) >= 0)
            row->readLine(def, line);
        else if (depth > 0 && row)
            problems.push_back("\"" + line[0].text + "\" is no connector's number");
        else if (depth <= 0)
        {
            row = findBlock(line);
            ended = line[0].is("end");
            if (line[0].is("flags"))
                readFlags(def, line);
            else if (line[0].is("position") && !readPosition(def, line))
                problems.push_back("the position is not two numbers");
        }
    }
    def.wires.erase(std::remove_if(def.wires.begin(), def.wires.end(),
                                   [](const WireDef& wire) { return wire.source.empty(); }),
                    def.wires.end());
    if (!why.empty())
        problems.push_back(why);
    else if (!ended)
        problems.push_back("its position, flags and wires are cut off");
    return def;
}

void applyDef(OP_Node& node, const NodeDef& def)
{
    if (def.hasPosition && std::isfinite(def.x) && std::isfinite(def.y))
        node.setXY(def.x, def.y);
    for (const auto& flag : def.flags)
    {
        for (const FlagRow& row : flag_rows)
            if (flag.first == row.name)
                (node.flags().*row.set)(flag.second);
        for (const DetailRow& row : detail_rows)
            if (flag.first == row.name && flag.second && node.castToVOPNode())
                node.setExtraFlag(row.letter, 1);
    }
}

} // namespace standin
