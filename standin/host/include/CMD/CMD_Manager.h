#ifndef CMD_MANAGER_H
#define CMD_MANAGER_H

#include <UT/UT_String.h>

#include <iosfwd>
#include <string>

/// The command interpreter: a small part of hscript.
///
/// Commands are separated by line ends and ';', words by white space. '…' keeps text as it is, "…" replaces
/// variables, a backslash takes the next character as it is, and '#' at the start of a word begins a remark.
/// $NAME and ${NAME} read a variable of this interpreter, else of the environment, else what expressions know at the
/// working node ($F, $OS); an unknown one stays as typed. `expression` gives the value of an expression at the working
/// node, also inside "…"; the value never ends the word.
///
/// | command                         | what it does                                                  |
/// |---------------------------------|---------------------------------------------------------------|
/// | echo [-n] WORD...               | prints the words, -n without the line end                     |
/// | set NAME = WORD...              | sets a local variable                                         |
/// | set -u NAME...                  | removes it                                                    |
/// | opcf PATH                       | makes a node the thread's working node                        |
/// | opparm NODE PARM VALUE          | sets a component, or the first one of a parameter             |
/// | opparm NODE PARM ( VALUE ... )  | sets the components from there on; more PARM and values may   |
/// |                                 | follow either form; calls no callback                         |
///
/// Paths start from the thread's working node. The variables are those of the session (CH_Manager), so expressions
/// see them too.
///
/// What goes wrong is one sentence on the error stream and ends that command only.
class CMD_Manager
{
public:
    CMD_Manager();
    virtual ~CMD_Manager();

    /// Runs the commands of a text. Output goes to the console. With `create_block` all that they change is one step of
    /// undo.
    void sendInput(const char* input, bool create_block = true);

    /// The same with output and errors to given streams; null stands for the console.
    void execute(const char* cmd, bool add_to_history = false, std::ostream* out = 0, std::ostream* err = 0,
                 bool do_alias_expansion = true, bool create_block = true);

    /// Sets a variable for scripts. With `exported`, programs started from here see it in their environment.
    void setVariable(const char* name, const char* value, bool exported = true);
    void unsetVariable(const char* name);
    /// False when scripts have no variable of that name; the environment counts.
    bool getVariable(const char* name, UT_String& value) const;

    /// Whether each command is printed, as typed, before it runs. Off at first.
    bool getEcho() const { return m_echo; }
    void setEcho(bool on) { m_echo = on; }

    /// The text with its variables replaced.
    std::string expandVariables(const std::string& text) const;

private:
    CMD_Manager(const CMD_Manager&);
    CMD_Manager& operator=(const CMD_Manager&);

    bool m_echo;
};

#endif
