#pragma once

/// What the shared library offers; everything else in it is bound when it is linked.
#define ORV_EXPORT __attribute__((visibility("default")))
