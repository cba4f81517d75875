#pragma once

// The whole of the syntax tree.
#include "cpp/composite_nodes.h"
#include "cpp/interior_nodes.h"
#include "cpp/leaf_nodes.h"
