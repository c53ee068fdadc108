#include "readers/arrays/hdf5_attributes.h"

#include <array>

#include "base/number_text.h"
#include "readers/arrays/hdf5_handle.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostText = 4096;
constexpr hssize_t kMostNumbers = 64;

std::string TextValue(const Hdf5Handle& attribute, const Hdf5Handle& type) {
  if (H5Tis_variable_str(type.Id()) > 0) {
    const Hdf5Handle text_type = Type(H5Tcopy(type.Id()));
    char* text = nullptr;
    if (H5Aread(attribute.Id(), text_type.Id(), &text) < 0 || text == nullptr) return {};
    std::string copy(text, std::min(std::char_traits<char>::length(text), kMostText));
    H5free_memory(text);
    return copy;
  }
  const std::size_t size = H5Tget_size(type.Id());
  if (size == 0 || size > kMostText) return {};
  std::string text(size, '\0');
  if (H5Aread(attribute.Id(), type.Id(), text.data()) < 0) return {};
  return std::string(TrimBlanks(text.substr(0, text.find('\0'))));
}

std::string NumbersValue(const Hdf5Handle& attribute, std::size_t count) {
  std::vector<double> values(count);
  if (H5Aread(attribute.Id(), H5T_NATIVE_DOUBLE, values.data()) < 0) return {};
  std::string text;
  for (const double value : values) text += (text.empty() ? "" : " ") + ShortestText(value);
  return text;
}

}  // namespace

std::string AttributeText(hid_t object, const char* name) {
  if (H5Aexists(object, name) <= 0) return {};
  const Hdf5Handle attribute = Attribute(H5Aopen(object, name, H5P_DEFAULT));
  if (!attribute.Good()) return {};
  const Hdf5Handle type = Type(H5Aget_type(attribute.Id()));
  const Hdf5Handle space = Space(H5Aget_space(attribute.Id()));
  if (!type.Good() || !space.Good()) return {};
  const hssize_t count = H5Sget_simple_extent_npoints(space.Id());
  const H5T_class_t kind = H5Tget_class(type.Id());
  if (kind == H5T_STRING && count == 1) return TextValue(attribute, type);
  const bool numbers = kind == H5T_INTEGER || kind == H5T_FLOAT;
  if (!numbers || count < 1 || count > kMostNumbers) return {};
  return NumbersValue(attribute, static_cast<std::size_t>(count));
}

std::vector<std::string> ScalesOf(hid_t dataset, std::size_t axes) {
  std::vector<std::string> paths(axes);
  if (AttributeText(dataset, "CLASS") == "DIMENSION_SCALE") {
    if (axes == 1) paths[0] = PathOf(dataset);
    return paths;
  }
  if (H5Aexists(dataset, "DIMENSION_LIST") <= 0) return paths;
  const Hdf5Handle attribute = Attribute(H5Aopen(dataset, "DIMENSION_LIST", H5P_DEFAULT));
  if (!attribute.Good()) return paths;
  const Hdf5Handle space = Space(H5Aget_space(attribute.Id()));
  const Hdf5Handle stored = Type(H5Aget_type(attribute.Id()));
  const bool lists = stored.Good() && H5Tget_class(stored.Id()) == H5T_VLEN;
  if (!space.Good() || !lists ||
      H5Sget_simple_extent_npoints(space.Id()) != static_cast<hssize_t>(axes)) {
    return paths;
  }
  const Hdf5Handle type = Type(H5Tvlen_create(H5T_STD_REF_OBJ));
  std::vector<hvl_t> references(axes);
  if (H5Aread(attribute.Id(), type.Id(), references.data()) < 0) return paths;
  for (std::size_t i = 0; i < axes; ++i) {
    if (references[i].len == 0) continue;
    const Hdf5Handle scale =
        Dataset(H5Rdereference2(dataset, H5P_DEFAULT, H5R_OBJECT, references[i].p));
    if (scale.Good()) paths[i] = PathOf(scale.Id());
  }
  H5Dvlen_reclaim(type.Id(), space.Id(), H5P_DEFAULT, references.data());
  return paths;
}

std::string PathOf(hid_t object) {
  std::array<char, kMostText> name{};
  const ssize_t size = H5Iget_name(object, name.data(), name.size());
  if (size <= 0 || static_cast<std::size_t>(size) >= name.size()) return {};
  return name[0] == '/' ? name.data() + 1 : name.data();
}

}  // namespace tarnwick
