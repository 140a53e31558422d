#pragma once
#include <cstdarg>
#include <string>

/// printf into a string, with '.' as decimal point whatever the process's locale is.
std::string UTformatText(const char* format, std::va_list arguments);
