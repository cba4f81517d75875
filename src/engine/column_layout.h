#pragma once

namespace Tessel {

// What blanks that reach a column come to be, and how long lines may get: no limit when 0.
struct ColumnLayout {
    int tabSize = 1;
    int tabMode = 0;
    int margin = 0;
};

}  // namespace Tessel
