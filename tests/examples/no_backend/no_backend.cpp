/// Something that is exported, but no entry function.
extern "C" int answer_to_nothing() {
    return 42;
}
