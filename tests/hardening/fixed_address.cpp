// An address among what is never written: the loader must write to the segment of code for it.
extern "C" {
extern void const* const unhardened_address;
void const* const unhardened_address = &unhardened_address;
}
