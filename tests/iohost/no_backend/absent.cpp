extern "C" int absent_answer() {
    return 42;
}
