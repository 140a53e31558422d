// A shared object that is no renderer plug-in.
extern "C" __attribute__((visibility("default"))) int somethingElse() { return 1; }
