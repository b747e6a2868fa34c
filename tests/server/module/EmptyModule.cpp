// A library that is no provider module.
extern "C" __attribute__((visibility("default"))) int nothingToSeeHere() {
    return 0;
}
