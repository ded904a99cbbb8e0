/// An entry function of a number that the host no longer calls.
extern "C" int example_open_backend_1() {
    return 42;
}
