#include "sources/arrays/array_roles.h"

#include <sstream>

namespace tarnwick {
namespace {

/// The paths that an attribute names, in the group of its array.
void AddNamed(const NamedArray& array, const char* attribute, std::set<std::string>& paths) {
  const std::size_t slash = array.path.rfind('/');
  const std::string group = slash == std::string::npos ? "" : array.path.substr(0, slash + 1);
  std::istringstream names(array.Attribute(attribute));
  for (std::string name; names >> name;) {
    paths.insert(name.starts_with('/') ? name.substr(1) : group + name);
  }
}

}  // namespace

bool ArrayRoles::IsMeasured(const NamedArray& array) const {
  return !bounds.contains(array.path) && !coordinates.contains(array.path);
}

ArrayRoles RolesOf(std::span<const NamedArray> arrays) {
  ArrayRoles roles;
  for (const NamedArray& array : arrays) {
    for (const char* const attribute : {"bounds", "climatology"}) {
      AddNamed(array, attribute, roles.bounds);
    }
    AddNamed(array, "coordinates", roles.coordinates);
    roles.coordinates.insert(array.axes.begin(), array.axes.end());
  }
  return roles;
}

}  // namespace tarnwick
