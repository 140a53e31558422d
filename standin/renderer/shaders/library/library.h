#pragma once

#include "kr_plugin.h"

#include <vector>

/// The shipped shader library, as tables: a family of shaders is a list of rows, a row a name, an output and a list
/// of parameters. What an artist sees of a parameter is written in the family's metadata file, not here.
namespace zelk::library
{

/// One parameter with its default.
struct Parameter
{
    const char* name;
    int type;                    ///< KR_TYPE_...
    std::vector<double> numbers; ///< components of the default; of an array, those of all its elements
    std::vector<const char*>
        texts;       ///< a text default, the items of an enumeration, or the elements of an array
    int elementType; ///< of an array; KR_TYPE_UNDEFINED otherwise
    bool linkable;   ///< false: the renderer evaluates it once, so nothing can be wired to it
};

using Parameters = std::vector<Parameter>;

/// One shader or camera. A parameter "name", which every node of the renderer has, is added in front.
struct Shader
{
    const char* name;
    int kind;   ///< KR_NODE_...
    int output; ///< KR_TYPE_...
    Parameters parameters;
};

using Shaders = std::vector<Shader>;

/// Each makes one parameter of the type that its name says.
Parameter byteParm(const char* name, int value);
Parameter intParm(const char* name, int value);
Parameter uintParm(const char* name, unsigned value);
Parameter boolParm(const char* name, bool value);
Parameter floatParm(const char* name, double value);
Parameter rgbParm(const char* name, double r, double g, double b);
Parameter rgbaParm(const char* name, double r, double g, double b, double a);
Parameter vectorParm(const char* name, double x, double y, double z);
Parameter pointParm(const char* name, double x, double y, double z);
Parameter point2Parm(const char* name, double x, double y);
Parameter stringParm(const char* name, const char* text);
Parameter nodeParm(const char* name);
Parameter matrixParm(const char* name); ///< the identity
Parameter enumParm(const char* name, std::vector<const char*> items, int index);

/// An array; `numbers` are the components of its elements, one element after the other.
Parameter arrayParm(const char* name, int elementType, std::vector<double> numbers);
Parameter arrayParm(const char* name, std::vector<const char*> texts);

/// The same parameter, but nothing can be wired to it.
Parameter constant(Parameter parameter);

/// What every camera has, to be followed by the parameters of its own.
Parameters cameraParms();

/// Declares the rows in their order.
void declare(const Shaders& shaders);

/// The families, each in a file of its own.
Shaders surfaces();
Shaders textures();
Shaders math();
Shaders volumes();
Shaders cameras();

} // namespace zelk::library
