#include <netcdf.h>

#include <algorithm>
#include <utility>

#include "base/error.h"
#include "base/mapped_file.h"
#include "base/number_text.h"
#include "readers/arrays/array_file.h"
#include "readers/arrays/netcdf_size.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostAttribute = 4096;
constexpr std::size_t kMostAxes = 8;

void Check(int status, const char* what) {
  if (status == NC_NOERR) return;
  throw Error(std::string("The file is damaged: ") + what + " cannot be read (" +
              nc_strerror(status) + ")");
}

bool HoldsNumbers(nc_type type) {
  return type != NC_CHAR && type != NC_STRING;
}

class Netcdf final : public ArrayFile {
 public:
  explicit Netcdf(const std::string& file) {
    const MappedFile mapped(file);
    if (ClaimedSize(mapped.Bytes()) > mapped.Bytes().size()) {
      throw Error("The NetCDF file is cut short: its header claims more values than it holds");
    }
    if (const int status = nc_open(file.c_str(), NC_NOWRITE, &id_); status != NC_NOERR) {
      throw Error(std::string("The NetCDF file is damaged or cut short (") + nc_strerror(status) +
                  ")");
    }
  }
  ~Netcdf() override { nc_close(id_); }

  std::vector<ArrayInfo> Arrays() override {
    int count = 0;
    Check(nc_inq_nvars(id_, &count), "the list of its variables");
    std::vector<ArrayInfo> arrays;
    arrays.reserve(static_cast<std::size_t>(std::max(count, 0)));
    for (int variable = 0; variable < count; ++variable) arrays.push_back(InfoOf(variable));
    return arrays;
  }

  std::vector<double> Column(const ColumnPlace& place) override {
    int variable = 0;
    if (nc_inq_varid(id_, place.path.c_str(), &variable) != NC_NOERR) {
      throw Error("There is no array \"" + place.path + "\" in the file");
    }
    const Shape shape = ShapeOf(variable);
    if (shape.lengths.size() > kMostAxes) throw TooManyAxes(place);
    const ColumnLine line = LineOfColumn(shape.lengths, place);
    const std::vector<std::size_t> start(line.start.begin(), line.start.end());
    std::vector<std::size_t> count(shape.lengths.size(), 1);
    count[line.axis] = line.rows;
    std::vector<double> values(line.rows);
    if (values.empty()) return values;
    const int status = nc_get_vara_double(id_, variable, start.data(), count.data(), values.data());
    // A value that a double cannot hold is out of range, and the others are read.
    if (status != NC_ERANGE) Check(status, place.path.c_str());
    return values;
  }

 private:
  struct Shape {
    std::vector<std::uint64_t> lengths;
    std::vector<std::string> axes;
  };

  Shape ShapeOf(int variable) const {
    int count = 0;
    Check(nc_inq_varndims(id_, variable, &count), "a variable");
    if (std::cmp_greater(count, kMostAxes))
      return {std::vector<std::uint64_t>(kMostAxes + 1, 2),
              std::vector<std::string>(kMostAxes + 1)};
    std::array<int, kMostAxes> ids{};
    Check(nc_inq_vardimid(id_, variable, ids.data()), "a variable");
    Shape shape;
    for (int i = 0; i < count; ++i) {
      std::array<char, NC_MAX_NAME + 1> name{};
      std::size_t length = 0;
      Check(nc_inq_dim(id_, ids[static_cast<std::size_t>(i)], name.data(), &length), "a dimension");
      shape.lengths.push_back(length);
      shape.axes.emplace_back(name.data());
    }
    return shape;
  }

  ArrayInfo InfoOf(int variable) const {
    std::array<char, NC_MAX_NAME + 1> name{};
    nc_type type = NC_NAT;
    Check(nc_inq_varname(id_, variable, name.data()), "a variable");
    Check(nc_inq_vartype(id_, variable, &type), "a variable");
    const Shape shape = ShapeOf(variable);
    ArrayInfo info{.path = name.data(),
                   .member = {},
                   .numbers = HoldsNumbers(type),
                   .lengths = {},
                   .axes = {},
                   .attributes = {}};
    for (const std::size_t axis : LongAxes(shape.lengths)) {
      info.lengths.push_back(shape.lengths[axis]);
      info.axes.push_back(shape.axes[axis]);
    }
    for (const char* const attribute : kToldAttributes) {
      std::string value = AttributeOf(variable, attribute);
      if (!value.empty()) info.attributes.emplace_back(attribute, std::move(value));
    }
    return info;
  }

  std::string AttributeOf(int variable, const char* name) const {
    nc_type type = NC_NAT;
    std::size_t length = 0;
    if (nc_inq_att(id_, variable, name, &type, &length) != NC_NOERR || length > kMostAttribute) {
      return {};
    }
    if (type == NC_CHAR) {
      std::string text(length, '\0');
      Check(nc_get_att_text(id_, variable, name, text.data()), "an attribute");
      return text.substr(0, text.find('\0'));
    }
    if (!HoldsNumbers(type)) return {};
    std::vector<double> values(length);
    Check(nc_get_att_double(id_, variable, name, values.data()), "an attribute");
    std::string text;
    for (const double value : values) text += (text.empty() ? "" : " ") + ShortestText(value);
    return text;
  }

  int id_ = 0;
};

}  // namespace

std::unique_ptr<ArrayFile> OpenNetcdf(const std::string& file) {
  return std::make_unique<Netcdf>(file);
}

}  // namespace tarnwick
