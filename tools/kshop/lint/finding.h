#ifndef KSHOP_LINT_FINDING_H
#define KSHOP_LINT_FINDING_H

#include <string>

namespace kshop
{

/// One mistake in a shader's metadata, or one piece of advice. Texts are the bytes of the files, whatever their encoding.
struct Finding
{
    std::string rule;      ///< its name, as docs/lint.md has it: "odd-menu"
    std::string severity;  ///< "error", "warning" or "advice"
    std::string file;      ///< where it was written; empty when the renderer itself is meant
    int line;              ///< from 1; 0 when it is not known
    int column;            ///< from 1; 0 when it is not known
    std::string shader;    ///< the renderer's name of the entry; empty when it is about none
    std::string parameter; ///< empty when it is about none, or about the shader as a whole
    std::string message;   ///< what is wrong: one sentence without its full stop
    std::string effect;    ///< what an artist sees because of it: sentences
    std::string remedy;    ///< what to do: sentences
};

} // namespace kshop

#endif
