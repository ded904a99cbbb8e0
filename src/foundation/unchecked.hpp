#pragma once

/// Marks a function whose settled behaviour touches an address that belongs to no object: no
/// sanitizer reports it, and no optimisation concludes from it that the call cannot happen. Only
/// for behaviour that modules in use rely on: an index that belongs to no list of nodes, and an
/// iterator that reads its own null position. Everything else stays watched.
#if defined(__clang__)
#define TAVI_IOAPI_UNCHECKED __attribute__((noinline, no_sanitize("undefined")))
#else
#define TAVI_IOAPI_UNCHECKED __attribute__((noinline, no_sanitize_undefined))
#endif
