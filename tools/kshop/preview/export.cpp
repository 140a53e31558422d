#include "export.h"

#include "../text.h"
#include "parm_facts.h"

#include <OP/OP_Network.h>
#include <OP/OP_Operator.h>
#include <PRM/PRM_ParmList.h>

#include <fmt/format.h>

#include <vector>

namespace kshop
{

namespace
{

/// A Python text between double quotes. Bytes that are no UTF-8 become the escapes that hou turns back into them.
std::string pythonText(const std::string& text)
{
    std::string result = "\"";
    for (std::size_t i = 0; i < text.size();)
    {
        const auto c = static_cast<unsigned char>(text[i]);
        const std::size_t length = c < 0x80 ? 1 : c >= 0xF0 ? 4 : c >= 0xE0 ? 3 : 2;
        const std::string_view character = std::string_view(text).substr(i, length);
        if (c == '"' || c == '\\')
            result += std::string("\\") + text[i++];
        else if (c < 0x20 || c == 0x7F)
            result += fmt::format("\\x{:02x}", static_cast<unsigned char>(text[i++]));
        else if (c < 0x80)
            result += text[i++];
        else if (width(character) == 1 && printable(character) == character)
        {
            result += character;
            i += length;
        }
        else
            result += fmt::format("\\udc{:02x}", static_cast<unsigned char>(text[i++]));
    }
    return result + "\"";
}

/// A basic TOML text.
std::string tomlText(const std::string& text)
{
    std::string result = "\"";
    for (const char c : text)
        if (c == '"' || c == '\\')
            result += std::string("\\") + c;
        else if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F)
            result += fmt::format("\\u{:04x}", static_cast<unsigned char>(c));
        else
            result += c;
    return result + "\"";
}

bool isWhole(const PRM_Parm& parm)
{
    return parm.getType().isOrdinalType() || parm.getType().hasFloatType(PRM_FLOAT_INTEGER);
}

std::string valueText(const PRM_Parm& parm, int component)
{
    if (parm.getType().isStringType())
        return pythonText(rawTextOf(parm, component));
    const double value = numberOf(parm, component);
    return isWhole(parm) ? fmt::format("{:.0f}", value) : fmt::format("{}", value);
}

/// A default may be an expression, which a plain value does not replace by itself.
bool hasExpressionDefault(const PRM_Parm& parm, int component)
{
    const PRM_Default* given = parm.getTemplatePtr()->getDefault(component);
    const bool isExpression =
        given && given->getString() && *given->getString() && given->getStringMeaning() != CH_STRING_LITERAL;
    return isExpression;
}

std::string componentLine(const PRM_Parm& parm, int component)
{
    const std::string head =
        fmt::format("node.parm({})", pythonText(parm.getChannelToken(component).toStdString()));
    if (parm.hasExpression(component))
        return fmt::format("{}.setExpression({}, hou.exprLanguage.{})\n", head,
                           pythonText(parm.getExpression(component)),
                           parm.getExpressionLanguage(component) == CH_PYTHON ? "Python" : "Hscript");
    const std::string clear = hasExpressionDefault(parm, component) ? head + ".deleteAllKeyframes()\n" : "";
    return fmt::format("{}{}.set({})\n", clear, head, valueText(parm, component));
}

bool hasPlainComponents(const PRM_Parm& parm)
{
    for (int i = 0; i < parm.getVectorSize(); ++i)
        if (parm.hasExpression(i) || hasExpressionDefault(parm, i))
            return false;
    return parm.getVectorSize() > 1;
}

std::string tupleLine(const PRM_Parm& parm)
{
    std::vector<std::string> values;
    values.reserve(static_cast<std::size_t>(parm.getVectorSize()));
    for (int i = 0; i < parm.getVectorSize(); ++i)
        values.push_back(valueText(parm, i));
    return fmt::format("node.parmTuple({}).set(({}))\n", pythonText(parm.getToken()), joined(values, ", "));
}

/// Folders set which tab is open; that is nothing to write down.
bool isWritten(const PRM_Parm& parm)
{
    const ParmKind kind = kindOf(parm);
    return holdsValue(kind) && kind != ParmKind::folder && differsFromDefault(parm);
}

std::string pythonLines(const PRM_Parm& parm)
{
    if (parm.isMultiParm())
        return parm.isDefault(0) ? ""
                                 : fmt::format("node.parm({}).set({})\n", pythonText(parm.getToken()),
                                               parm.getMultiParmNumItems());
    if (!isWritten(parm))
        return "";
    if (hasPlainComponents(parm))
        return tupleLine(parm);
    std::string lines;
    for (int i = 0; i < parm.getVectorSize(); ++i)
        if (!parm.isDefault(i))
            lines += componentLine(parm, i);
    return lines;
}

/// True inside a ramp that is as a fresh one.
bool isFreshInside(const PRM_Parm& parm)
{
    const PRM_Parm* parent = parm.getParentMultiParm();
    return parent && parent->isRampType() && !differsFromDefault(*parent);
}

std::string shaderName(const std::string& type)
{
    const std::string prefix = "korvan::";
    return type.compare(0, prefix.size(), prefix) == 0 ? "zelk__" + type.substr(prefix.size()) : type;
}

std::string expressionLine(const PRM_Parm& parm)
{
    const bool isPython = parm.getExpressionLanguage(0) == CH_PYTHON;
    return fmt::format("\"houdini.expression\" = {}\n",
                       tomlText((isPython ? "python:" : "") + std::string(parm.getExpression(0))));
}

std::string remarkText(const PRM_Parm& parm)
{
    std::vector<std::string> values;
    values.reserve(static_cast<std::size_t>(parm.getVectorSize()));
    for (int i = 0; i < parm.getVectorSize(); ++i)
        values.push_back(parm.hasExpression(i) ? "the expression " + kshop::quoted(parm.getExpression(i))
                         : parm.getType().isStringType() ? kshop::quoted(rawTextOf(parm, i))
                                                         : valueText(parm, i));
    return joined(values, " ");
}

std::string metadataLines(const std::string& shader, const PRM_Parm& parm)
{
    const std::string table =
        fmt::format("[{}.parameters.{}]\n", tomlText(shader), tomlText(parm.getToken()));
    if (parm.isMultiParm())
        return fmt::format("# {}: {}\n", printable(parm.getToken()),
                           countText(static_cast<std::size_t>(parm.getMultiParmNumItems()), "instance"));
    // The metadata has room for the first component's expression, and for none inside of lists.
    const bool canBeWritten = !parm.isMultiParmInstance() && parm.hasExpression(0) && !parm.isDefault(0);
    if (canBeWritten && parm.getVectorSize() == 1)
        return table + expressionLine(parm) + "\n";
    return fmt::format("# {}: {}\n", printable(parm.getToken()), remarkText(parm));
}

} // namespace

std::string pythonExport(const OP_Node& node)
{
    std::string text = fmt::format("import hou\n\nnetwork = hou.node(\"/shop\").createNode({})\n"
                                   "node = network.createNode({})\n",
                                   pythonText(node.getParent()->getOperator()->getName().toStdString()),
                                   pythonText(node.getOperator()->getName().toStdString()));
    const PRM_ParmList& parms = *node.getParmList();
    for (int i = 0; i < parms.getEntries(); ++i)
        if (!isFreshInside(*parms.getParmPtr(i)))
            text += pythonLines(*parms.getParmPtr(i));
    return text;
}

std::string metadataExport(const OP_Node& node)
{
    const std::string shader = shaderName(node.getOperator()->getName().toStdString());
    std::string lines;
    const PRM_ParmList& parms = *node.getParmList();
    for (int i = 0; i < parms.getEntries(); ++i)
    {
        const PRM_Parm& parm = *parms.getParmPtr(i);
        if (!isFreshInside(parm) && (parm.isMultiParm() ? !parm.isDefault(0) : isWritten(parm)))
            lines += metadataLines(shader, parm);
    }
    if (lines.empty())
        return "# Nothing differs from the defaults.\n";
    return "# Defaults are the renderer plug-in's own; of what was edited, .mtd files have room for "
           "expressions.\n" +
           lines;
}

} // namespace kshop
