#pragma once

/// Marks what the shared library publishes; everything else stays hidden.
#define KVO_EXPORT __attribute__((visibility("default")))
