#pragma once

#include <string>

#include "scheme/property_set_store.h"
#include "support/temporary_folder.h"

// The text of a scheme file.
inline std::string schemeText(const std::string& name, const std::string& properties = "") {
    return "Tessel::PropertySet\n1\n\"" + name + "\"\n" + properties;
}

inline TesselUI::PropertySetStore readStore(const TemporaryFolder& directory) {
    TesselUI::PropertySetStore store(directory.path());
    store.read();
    return store;
}
