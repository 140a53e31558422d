#ifndef KSHOP_INTERFACE_JSON_H
#define KSHOP_INTERFACE_JSON_H

#include "operator_facts.h"
#include "session.h"

#include <nlohmann/json.hpp>

#include <string>
#include <utility>
#include <vector>

namespace kshop
{

/// Keys keep the documented order.
using Json = nlohmann::ordered_json;

/// The operators of one table under the table's name.
using TableFacts = std::pair<std::string, std::vector<OperatorFacts>>;

Json toJson(const TemplateFacts& facts);
Json toJson(const OperatorFacts& facts);

/// What `describe --json` prints: {"tables": {...}, "messages": [...]}.
Json interfaceJson(const std::vector<TableFacts>& tables, const std::vector<RendererMessage>& messages);

/// Two blanks of indentation and a newline at the end. Bytes that are no UTF-8 become U+FFFD. The same under every
/// locale.
std::string jsonText(const Json& value);

} // namespace kshop

#endif
