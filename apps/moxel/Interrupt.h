#pragma once

/// Requests from outside to stop: SIGINT (Ctrl-C) and SIGTERM.
namespace moxel::interrupt {

/// From now on the two signals only raise a flag, however often they come. Lowers it.
void watch();

bool isRequested();

/// Throws `Cancelled` once a stop was requested.
void check();

} // namespace moxel::interrupt
