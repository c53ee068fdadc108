#include <algorithm>
#include <array>
#include <cstddef>

#include "base/error.h"
#include "readers/arrays/array_file.h"
#include "readers/arrays/hdf5_attributes.h"
#include "readers/arrays/hdf5_handle.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostArrays = 20'000;
constexpr std::uint64_t kBlockBytes = std::uint64_t{8} << 20;
constexpr const char* kNoVariable = "This is a netCDF dimension but not a netCDF variable";
constexpr std::size_t kMostRank = 8;

/// What a value of an array is.
enum class Element { Number, Choice, Other };

Element ElementOf(hid_t type) {
  switch (H5Tget_class(type)) {
    case H5T_INTEGER:
    case H5T_FLOAT:
      return Element::Number;
    case H5T_ENUM:
      return Element::Choice;  // truth values are written so
    default:
      return Element::Other;
  }
}

std::vector<std::uint64_t> LengthsOf(const Hdf5Handle& dataset) {
  const Hdf5Handle space = Space(H5Dget_space(dataset.Id()));
  const int rank = space.Good() ? H5Sget_simple_extent_ndims(space.Id()) : -1;
  if (rank < 0) throw Error("The file is damaged: the shape of an array cannot be read");
  if (static_cast<std::size_t>(rank) > kMostRank)
    return std::vector<std::uint64_t>(kMostRank + 1, 2);
  std::array<hsize_t, kMostRank> lengths{};
  H5Sget_simple_extent_dims(space.Id(), lengths.data(), nullptr);
  return {lengths.begin(), lengths.begin() + rank};
}

/// Values that lie in other files are not looked for.
bool StandsHere(const Hdf5Handle& dataset) {
  const Hdf5Handle made = Properties(H5Dget_create_plist(dataset.Id()));
  return made.Good() && H5Pget_layout(made.Id()) != H5D_VIRTUAL &&
         H5Pget_external_count(made.Id()) == 0;
}

/// A column is read as records of one member, or as values; these are `width` numbers each.
struct Reading {
  Hdf5Handle memory;  // the type that the library fills in
  Hdf5Handle number;  // what each number in it is
  std::size_t width = 1;
};

class Hdf5 final : public ArrayFile {
 public:
  explicit Hdf5(const std::string& file)
      : file_(H5Fopen(file.c_str(), H5F_ACC_RDONLY, H5P_DEFAULT), &H5Fclose) {
    if (!file_.Good()) throw Error("The HDF5 file is damaged, cut short, or open for writing");
  }

  std::vector<ArrayInfo> Arrays() override {
    arrays_.clear();
    const auto visit = [](hid_t, const char* name, const H5O_info_t* info, void* self) -> herr_t {
      auto& file = *static_cast<Hdf5*>(self);
      if (info->type == H5O_TYPE_DATASET) file.Take(name);
      return file.arrays_.size() < kMostArrays ? 0 : 1;
    };
    if (H5Ovisit(file_.Id(), H5_INDEX_NAME, H5_ITER_INC, visit, this) < 0) {
      throw Error("The HDF5 file is damaged: its arrays cannot be listed");
    }
    return std::move(arrays_);
  }

  std::vector<double> Column(const ColumnPlace& place) override {
    const Hdf5Handle dataset = Dataset(H5Dopen2(file_.Id(), place.path.c_str(), H5P_DEFAULT));
    if (!dataset.Good() || !StandsHere(dataset)) {
      throw Error("There is no array \"" + place.path + "\" in the file");
    }
    const Hdf5Handle stored = Type(H5Dget_type(dataset.Id()));
    const Reading reading = ReadingOf(stored, place);
    std::vector<std::uint64_t> lengths = LengthsOf(dataset);
    const std::size_t rank = lengths.size();
    if (rank > kMostRank) throw TooManyAxes(place);
    if (reading.width > 1) lengths.push_back(reading.width);
    const ColumnLine line = LineOfColumn(lengths, place);
    std::vector<hsize_t> start(line.start.begin(),
                               line.start.begin() + static_cast<std::ptrdiff_t>(rank));
    // The values of one record stand behind each other; those of the others lie along the axis of the records.
    const bool in_one_record = line.axis >= rank;
    const std::size_t inside = rank < lengths.size() ? line.start.back() : 0;
    std::vector<double> values;
    if (in_one_record) {
      ReadBlock(dataset, reading, start, 0, 1, place);
      values.assign(buffer_.begin(), buffer_.begin() + static_cast<std::ptrdiff_t>(line.rows));
      return values;
    }
    values.reserve(line.rows);
    const std::size_t size =
        std::max(H5Tget_size(reading.memory.Id()), reading.width * sizeof(double));
    const std::uint64_t block = std::max<std::uint64_t>(kBlockBytes / size, 1);
    for (std::uint64_t row = 0; row < line.rows; row += block) {
      start[line.axis] = row;
      const std::uint64_t count = std::min(block, line.rows - row);
      ReadBlock(dataset, reading, start, line.axis, count, place);
      for (std::uint64_t i = 0; i < count; ++i) {
        values.push_back(buffer_[static_cast<std::size_t>(i) * reading.width + inside]);
      }
    }
    return values;
  }

 private:
  void Take(const char* name) {
    const std::string path(name);
    const bool plain =
        std::ranges::none_of(path, [](char c) { return static_cast<unsigned char>(c) < ' '; });
    // References of a common program's own, which nobody calls by name.
    if (!plain || path.starts_with("#refs#")) return;
    const Hdf5Handle dataset = Dataset(H5Dopen2(file_.Id(), name, H5P_DEFAULT));
    if (!dataset.Good() || !StandsHere(dataset)) return;
    if (AttributeText(dataset.Id(), "NAME").starts_with(kNoVariable)) return;
    const Hdf5Handle type = Type(H5Dget_type(dataset.Id()));
    ArrayInfo info{.path = path,
                   .member = {},
                   .numbers = ElementOf(type.Id()) != Element::Other,
                   .lengths = {},
                   .axes = {},
                   .attributes = {}};
    const std::vector<std::uint64_t> lengths = LengthsOf(dataset);
    const std::vector<std::string> scales = ScalesOf(dataset.Id(), lengths.size());
    for (const std::size_t axis : LongAxes(lengths)) {
      info.lengths.push_back(lengths[axis]);
      info.axes.push_back(scales[axis]);
    }
    for (const char* const attribute : kToldAttributes) {
      std::string value = AttributeText(dataset.Id(), attribute);
      if (!value.empty()) info.attributes.emplace_back(attribute, std::move(value));
    }
    if (H5Tget_class(type.Id()) == H5T_COMPOUND) return TakeMembers(type, info);
    arrays_.push_back(std::move(info));
  }

  void TakeMembers(const Hdf5Handle& record, const ArrayInfo& whole) {
    const int count = H5Tget_nmembers(record.Id());
    for (int i = 0; i < count && arrays_.size() < kMostArrays; ++i) {
      char* const name = H5Tget_member_name(record.Id(), static_cast<unsigned>(i));
      if (name == nullptr) continue;
      ArrayInfo info = whole;
      info.member = name;
      H5free_memory(name);
      const Hdf5Handle type = Type(H5Tget_member_type(record.Id(), static_cast<unsigned>(i)));
      const std::size_t width = WidthOf(type);
      const Hdf5Handle number = NumberType(type);
      info.numbers = width > 0 && ElementOf(number.Id()) != Element::Other;
      if (width > 1) {
        info.lengths.push_back(width);
        info.axes.emplace_back();
      }
      arrays_.push_back(std::move(info));
    }
  }

  /// How many numbers one value holds: one, or those of an array with one axis; 0 for others.
  static std::size_t WidthOf(const Hdf5Handle& type) {
    if (H5Tget_class(type.Id()) != H5T_ARRAY) return 1;
    hsize_t width = 0;
    if (H5Tget_array_ndims(type.Id()) != 1 || H5Tget_array_dims2(type.Id(), &width) < 0) return 0;
    return static_cast<std::size_t>(width);
  }

  static Hdf5Handle NumberType(const Hdf5Handle& type) {
    const bool array = H5Tget_class(type.Id()) == H5T_ARRAY;
    return Type(array ? H5Tget_super(type.Id()) : H5Tcopy(type.Id()));
  }

  static Reading ReadingOf(const Hdf5Handle& stored, const ColumnPlace& place) {
    const auto refuse = [&] {
      return Error("The array \"" + place.path + "\" holds no numbers" +
                   (place.member.empty() ? "" : " called \"" + place.member + '"'));
    };
    const bool records = H5Tget_class(stored.Id()) == H5T_COMPOUND;
    if (records == place.member.empty()) throw refuse();
    const int at = records ? H5Tget_member_index(stored.Id(), place.member.c_str()) : 0;
    if (at < 0) throw refuse();
    const Hdf5Handle value =
        Type(records ? H5Tget_member_type(stored.Id(), static_cast<unsigned>(at))
                     : H5Tcopy(stored.Id()));
    const std::size_t width = WidthOf(value);
    const Hdf5Handle element = NumberType(value);
    if (width == 0 || ElementOf(element.Id()) == Element::Other) throw refuse();
    // Choices are not turned into numbers by the library: they are read as they are, and their numbers then.
    const bool choice = ElementOf(element.Id()) == Element::Choice;
    Hdf5Handle filled = Type(choice ? H5Tget_native_type(element.Id(), H5T_DIR_ASCEND)
                                    : H5Tcopy(H5T_NATIVE_DOUBLE));
    Hdf5Handle number = Type(choice ? H5Tget_super(filled.Id()) : H5Tcopy(H5T_NATIVE_DOUBLE));
    if (width > 1) {
      const hsize_t many = width;
      filled = Type(H5Tarray_create2(filled.Id(), 1, &many));
    }
    if (!records) return {std::move(filled), std::move(number), width};
    Hdf5Handle record = Type(H5Tcreate(H5T_COMPOUND, H5Tget_size(filled.Id())));
    H5Tinsert(record.Id(), place.member.c_str(), 0, filled.Id());
    return {std::move(record), std::move(number), width};
  }

  /// Fills the buffer with the numbers of `count` rows.
  void ReadBlock(const Hdf5Handle& dataset, const Reading& reading,
                 const std::vector<hsize_t>& start, std::size_t axis, std::uint64_t count,
                 const ColumnPlace& place) {
    std::vector<hsize_t> counts(start.size(), 1);
    counts[axis] = count;
    const hsize_t rows = count;
    const Hdf5Handle memory = Space(H5Screate_simple(1, &rows, nullptr));
    const Hdf5Handle space = Space(H5Dget_space(dataset.Id()));
    const auto numbers = static_cast<std::size_t>(count) * reading.width;
    buffer_.resize(numbers);
    const bool read = H5Sselect_hyperslab(space.Id(), H5S_SELECT_SET, start.data(), nullptr,
                                          counts.data(), nullptr) >= 0 &&
                      H5Dread(dataset.Id(), reading.memory.Id(), memory.Id(), space.Id(),
                              H5P_DEFAULT, buffer_.data()) >= 0 &&
                      H5Tconvert(reading.number.Id(), H5T_NATIVE_DOUBLE, numbers, buffer_.data(),
                                 nullptr, H5P_DEFAULT) >= 0;
    if (!read) {
      throw Error("The array \"" + place.path +
                  "\" cannot be read: it is damaged, or packed by a filter that is not installed");
    }
  }

  Hdf5Handle file_;
  std::vector<ArrayInfo> arrays_;
  std::vector<double> buffer_;
};

}  // namespace

std::unique_ptr<ArrayFile> OpenHdf5(const std::string& file) {
  H5Eset_auto2(H5E_DEFAULT, nullptr, nullptr);
  return std::make_unique<Hdf5>(file);
}

}  // namespace tarnwick
