#pragma once

// The platform's own property-list parser, for tests that read real lists.
#if defined(__APPLE__)
#include "CFPropertyListParser.h"
namespace wakeloft::testing {
using SystemPropertyListParser = CFPropertyListParser;
}
#else
#include "LibplistPropertyListParser.h"
namespace wakeloft::testing {
using SystemPropertyListParser = LibplistPropertyListParser;
}
#endif
