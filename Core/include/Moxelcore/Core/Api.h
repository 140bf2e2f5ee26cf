#pragma once

/// Marks what the shared library exports; everything else stays hidden.
#define MOXELCORE_API __attribute__((visibility("default")))
