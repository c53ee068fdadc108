// Attributes of HDF5 objects as texts. Knows which say what an array holds.
#pragma once

#include <hdf5.h>

#include <string>
#include <vector>

namespace tarnwick {

/// The attribute as a text, numbers with blanks between; empty where there is none that can be told so.
std::string AttributeText(hid_t object, const char* name);

/// The paths of the scales of a dataset's axes, as many as it has; empty where an axis has none. A scale names itself.
std::vector<std::string> ScalesOf(hid_t dataset, std::size_t axes);

/// The path of an object from the root, without the slash before it.
std::string PathOf(hid_t object);

}  // namespace tarnwick
