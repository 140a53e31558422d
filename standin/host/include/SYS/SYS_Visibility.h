#pragma once
/// Marks what a shared object exports when it is compiled with hidden visibility.
#define SYS_VISIBILITY_EXPORT __attribute__((visibility("default")))
#define SYS_VISIBILITY_LOCAL __attribute__((visibility("hidden")))
