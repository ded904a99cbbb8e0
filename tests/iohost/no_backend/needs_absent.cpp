extern "C" int absent_answer();

/// The right entry function of a module that lacks what it needs.
extern "C" int example_backend_module_3() {
    return absent_answer();
}
