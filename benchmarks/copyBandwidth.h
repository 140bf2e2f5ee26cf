#pragma once

namespace mox::benchmarks {

/// Bytes per second, read and written together, that all threads reach when they copy memory beyond the caches.
double copyBandwidth();

} // namespace mox::benchmarks
