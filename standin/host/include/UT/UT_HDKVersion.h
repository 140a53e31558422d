#pragma once
/// Interface version of the toolkit: major, minor, build and patch, two digits each.
#define HDK_API_VERSION 15050000
