#pragma once

/// What the shared library lends to its hosts. Everything else of the library is hidden
/// (`-fvisibility=hidden`).
#define BASEAPI_API __attribute__((visibility("default")))
