// Basic types and macros of the provider interface.

#pragma once

#include <cstddef>

#define PEGASUS_NAMESPACE_BEGIN namespace Pegasus {
#define PEGASUS_NAMESPACE_END }
#define PEGASUS_NAMESPACE(X) Pegasus::X
#define PEGASUS_USING_PEGASUS using namespace Pegasus
#define PEGASUS_STD(X) std::X
#define PEGASUS_USING_STD using namespace std

#define PEGASUS_EXPORT __attribute__((visibility("default")))

#define PEGASUS_TEMPLATE_SPECIALIZATION template<>

#define PEGASUS_UINT64_LITERAL(X) X##ULL
#define PEGASUS_SINT64_LITERAL(X) X##LL
#define PEGASUS_64BIT_CONVERSION_WIDTH "ll"

#define PEG_NOT_FOUND Pegasus::Uint32(-1)

namespace Pegasus {

typedef bool Boolean;
typedef unsigned char Uint8;
typedef signed char Sint8;
typedef unsigned short Uint16;
typedef signed short Sint16;
typedef unsigned int Uint32;
typedef signed int Sint32;
typedef unsigned long long Uint64;
typedef signed long long Sint64;
typedef float Real32;
typedef double Real64;

} // namespace Pegasus
