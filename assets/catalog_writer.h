#pragma once

#include "assets/catalog.h"

// For start-up, shut-down and tests.
namespace dunkman::writable {

extern AssetCatalog assetCatalog;

} // namespace dunkman::writable
