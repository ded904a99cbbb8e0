#pragma once

/// \file
/// What every other public header stands on: the export macro, the lifetime annotation, and the
/// reference that ties a module to the revision of the library it was built for.

/// Marks what `libiokern.so` exports. It means the same in the library and in its users.
#define TAVI_IOAPI_API __attribute__((visibility("default")))

/// Marks a view or reference that must not outlive the object it was asked of. Clang warns where
/// it does; other compilers ignore it.
#if defined(__clang__)
#define TAVI_IOAPI_LIFETIMEBOUND [[clang::lifetimebound]]
#else
#define TAVI_IOAPI_LIFETIMEBOUND
#endif

/// Two bytes that hold 0 and are never read. The name carries the revision: a module that was
/// built for one revision does not load on a library that carries another, and the loader names
/// this symbol as the one that is missing.
extern "C" TAVI_IOAPI_API char __tavi_ioapi_library_revision_0_5[2];

namespace tavi::ioapi::v2::detail {

/// Keeps the reference to the revision object in every module that includes a public header.
/// Hidden, so that the copy of a module is its own and the module can be unloaded; retained where
/// unused sections are dropped.
[[gnu::used, gnu::retain, gnu::visibility("hidden")]] inline char const* const required_revision =
    __tavi_ioapi_library_revision_0_5;

} // namespace tavi::ioapi::v2::detail
