#ifndef STANDIN_OP_OTL_INDEX_H
#define STANDIN_OP_OTL_INDEX_H

#include <OP/OP_OTLDefinition.h>

#include <string>
#include <vector>

/// @file
/// The section "INDEX_SECTION" of an asset file: what it says about the types in it.

namespace standin
{

constexpr const char* index_section = "INDEX_SECTION";

/// The fields of a definition by the order in which the section has them.
struct DefinitionFields
{
    std::string name, label, path, icon, table, extra, userInfo;
    unsigned minInputs = 0, maxInputs = 0, maxOutputs = 0, modTime = 0;
    bool subnet = false, empty = false, python = false;
};

OP_OTLDefinition makeDefinition(const DefinitionFields& fields);
DefinitionFields fieldsOf(const OP_OTLDefinition& definition);

/// Reads the records of the section, those before the first damaged one.
/// @param why  a sentence's second half, "its ... ", when something is damaged; else left alone
std::vector<OP_OTLDefinition> readDefinitions(const std::string& bytes, std::string& why);

/// Reads the text form of expanded assets, "Operator: name" and so on.
std::vector<OP_OTLDefinition> readDefinitionText(const std::string& text, std::string& why);

/// The section for these definitions, records of version 4.
std::string writeDefinitions(const std::vector<OP_OTLDefinition>& definitions);

/// "namespace::Table/name::version".
std::string tableAndName(const std::string& table, const std::string& name);

} // namespace standin

#endif
