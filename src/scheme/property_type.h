#pragma once

namespace Tessel {

// What a property's value is. The numbers are the type tags of scheme files.
enum class PropertyType : int { Boolean = 1, Integer = 2, String = 3 };

}  // namespace Tessel
