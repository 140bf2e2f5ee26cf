#pragma once

namespace mox {

/// 64-bit integers are the same C++ types on every platform, so that templates over them have one instantiation.
using int64 = long long;
using uint64 = unsigned long long;

} // namespace mox
