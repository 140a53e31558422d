#ifndef KSHOP_HELP_TEXTS_H
#define KSHOP_HELP_TEXTS_H

// What `kshop --help` and `kshop COMMAND --help` say besides the options.

namespace kshop
{

const char* const program_help = "Looks at the node types that host plug-ins register, and tries them out.";

const char* const program_examples = R"(Examples:
  kshop list                                  what was registered
  kshop describe korvan::image                one type's whole interface
  kshop describe --json > interface.json      everything, for programs
  kshop lint my_shader.mtd                    mistakes in a shader's metadata
  kshop python my_network.py                  a script inside the host, with hou
  kshop --dso build/dso/korvan_shop.so list   with another plug-in

Exit status: 0 when all went well, 1 after a mistake (its sentence is on standard error), 2 for wrong usage.
HOUDINI_PATH, HOUDINI_DSO_PATH, KORVAN_PLUGIN_PATH and KORVAN_CATALOGUE say where things are looked for;
'kshop env' shows what that comes to.)";

const char* const list_examples = R"(Examples:
  kshop list              the types in table order, and how many there are of each category
  kshop list --why        and each renderer entry without a node type, with the reason
  kshop list --timings    and where the time of the start-up went
  kshop list --json       for programs)";

const char* const describe_examples = R"(Examples:
  kshop describe korvan::image korvan::noise   two types
  kshop describe                               all of them
  kshop describe --json korvan::image          for programs; with the messages of registration)";

const char* const diff_examples =
    R"(Exit status: 0 when every saved scene stays as it is, 1 when one could break, 2 when the files cannot be compared.

Examples:
  kshop describe --json > old.json        before the change
  kshop describe --json | kshop diff old.json -
  kshop diff --json old.json new.json     for programs)";

const char* const help_pages_examples = R"(Examples:
  kshop help-pages docs/shaders    index.html, and a page for each type where its help address points)";

const char* const python_examples = R"(kshop python [--deltas FILE] [SCRIPT [ARG...]]

Without SCRIPT it is an interactive shell; SCRIPT '-' is standard input. What follows SCRIPT is the script's own,
in sys.argv; the exit status is the script's.

Examples:
  kshop python
  kshop python build_network.py --scale 2
  kshop python --deltas edits.json build_network.py    with every change record that it sends
  echo 'print(hou.node("/shop").path())' | kshop python -)";

const char* const env_examples = R"(Examples:
  kshop env > environment.txt 2>&1    what belongs into a report of a mistake
  kshop env --json)";

const char* const listen_examples =
    R"(What arrives is printed as a render in progress would receive it, until Ctrl-C or --count.
With --json a line is {"node_path", "entry_name", "parms": {NAME: {"type", "value"}}}.

Examples:
  kshop listen                                  at ZELK_IPR_ENDPOINT, or the user's own socket
  kshop listen --json --count 100 > edits.json  for programs, and for 'kshop replay'
  kshop listen --endpoint tcp://127.0.0.1:9000)";

const char* const replay_examples =
    R"(Sends what 'kshop listen --json' or 'kshop python --deltas' has written, in order, to whoever listens.
Nothing is sent when a line is wrong. The status is 1 when a record was heard by nobody.

Examples:
  kshop replay edits.json
  kshop replay --rate 25 edits.json    as if somebody dragged a slider
  grep korvan edits.json | kshop replay -)";

const char* const keys_examples =
    R"(An endpoint that other machines can reach needs keys at both ends: name the file by ZELK_IPR_KEYS.

Examples:
  kshop keys ~/.korvan-keys
  ZELK_IPR_KEYS=~/.korvan-keys kshop listen --endpoint 'tcp://*:9000')";

const char* const lint_examples =
    R"(Loads shaders and metadata as the plug-in does and tells every mistake: where it is, what an artist will see because
of it, and what to do. docs/lint.md has a section for each rule.

Examples:
  kshop lint                     everything on the search path
  kshop lint my_shader.mtd       a file, wherever it is; nothing is said about others
  kshop lint --strict --json     for programs that guard a library

Exit status: 1 when there are errors, with --strict also when there are warnings; 0 otherwise.)";

const char* const tab_examples = R"(Examples:
  kshop tab /shop                            what can be made in /shop
  kshop tab /shop --create korvan_vopnet     what can be made inside a new node of that type
  kshop tab /shop/look --scene look.hip      what can be made inside a node of a scene)";

const char* const preview_examples =
    R"(Shows what an artist will get, on a page in a browser: open the address that is printed. Values, menus, callbacks and
conditions are those of a real node, and the page follows when a metadata file is saved.
The address carries a token, and only this machine can reach it. Ctrl-C ends the preview.

Examples:
  kshop preview
  kshop preview --open korvan::image
  kshop preview --port 0                any free port)";

} // namespace kshop

#endif
