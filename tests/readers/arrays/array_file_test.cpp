// Files of arrays made by their libraries, and what is read of them.
#include "readers/arrays/array_file.h"

#include <gtest/gtest.h>
#include <hdf5.h>
#include <netcdf.h>

#include <cstddef>

#include "readers/arrays/hdf5_handle.h"
#include "readers/arrays/netcdf_size.h"
#include "support/refusal.h"
#include "support/temporary_folder.h"

namespace tarnwick {
namespace {

using testing::Refusal;
using testing::TemporaryFolder;

void Write(hid_t file, const char* path, hid_t type, const std::vector<hsize_t>& lengths,
           const void* values) {
  const Hdf5Handle links = Properties(H5Pcreate(H5P_LINK_CREATE));
  H5Pset_create_intermediate_group(links.Id(), 1);
  const Hdf5Handle space =
      Space(H5Screate_simple(static_cast<int>(lengths.size()), lengths.data(), nullptr));
  const Hdf5Handle set =
      Dataset(H5Dcreate2(file, path, type, space.Id(), links.Id(), H5P_DEFAULT, H5P_DEFAULT));
  EXPECT_GE(H5Dwrite(set.Id(), type, H5S_ALL, H5S_ALL, H5P_DEFAULT, values), 0);
}

/// A column with a unit, a table of 3 × 2, truth values, records, and an array of a million million values that were never
/// written.
std::string MadeHdf5(const TemporaryFolder& folder) {
  const std::string name = folder.File("made.h5").string();
  const Hdf5Handle file(H5Fcreate(name.c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT),
                        &H5Fclose);
  const double values[] = {1, 2.5, 3, 4, 5, 6};
  Write(file.Id(), "run/t", H5T_NATIVE_DOUBLE, {3, 1}, values);
  Write(file.Id(), "run/table", H5T_NATIVE_DOUBLE, {3, 2}, values);
  const Hdf5Handle truth = Type(H5Tenum_create(H5T_NATIVE_INT8));
  const signed char no = 0;
  const signed char yes = 1;
  H5Tenum_insert(truth.Id(), "FALSE", &no);
  H5Tenum_insert(truth.Id(), "TRUE", &yes);
  const signed char truths[] = {0, 1, 1};
  Write(file.Id(), "good", truth.Id(), {3}, truths);
  struct Record {
    int count;
    double pair[2];
  };
  const Record records[] = {{7, {1, 2}}, {8, {3, 4}}, {9, {5, 6}}};
  const hsize_t two = 2;
  const Hdf5Handle pair = Type(H5Tarray_create2(H5T_NATIVE_DOUBLE, 1, &two));
  const Hdf5Handle record = Type(H5Tcreate(H5T_COMPOUND, sizeof(Record)));
  H5Tinsert(record.Id(), "count", offsetof(Record, count), H5T_NATIVE_INT);
  H5Tinsert(record.Id(), "pair", offsetof(Record, pair), pair.Id());
  Write(file.Id(), "records", record.Id(), {3}, records);
  const hsize_t many = 1'000'000'000'000;
  const hsize_t piece = 1000;
  const Hdf5Handle space = Space(H5Screate_simple(1, &many, nullptr));
  const Hdf5Handle pieces = Properties(H5Pcreate(H5P_DATASET_CREATE));
  H5Pset_chunk(pieces.Id(), 1, &piece);
  const Hdf5Handle absurd = Dataset(H5Dcreate2(file.Id(), "absurd", H5T_NATIVE_DOUBLE, space.Id(),
                                               H5P_DEFAULT, pieces.Id(), H5P_DEFAULT));
  const Hdf5Handle text = Type(H5Tcopy(H5T_C_S1));
  H5Tset_size(text.Id(), 2);
  const Hdf5Handle one = Space(H5Screate(H5S_SCALAR));
  const Hdf5Handle unit =
      Attribute(H5Acreate2(absurd.Id(), "units", text.Id(), one.Id(), H5P_DEFAULT, H5P_DEFAULT));
  H5Awrite(unit.Id(), text.Id(), "mV");
  return name;
}

/// "time" (with records), "flow" along it, and "depth" of its own.
std::string MadeNetcdf(const TemporaryFolder& folder, int mode) {
  const std::string name = folder.File("made.nc").string();
  int file = 0, time = 0, depths = 0, times = 0, flow = 0, depth = 0;
  EXPECT_EQ(nc_create(name.c_str(), mode | NC_CLOBBER, &file), NC_NOERR);
  nc_def_dim(file, "time", NC_UNLIMITED, &time);
  nc_def_dim(file, "depth", 2, &depths);
  nc_def_var(file, "time", NC_DOUBLE, 1, &time, &times);
  nc_put_att_text(file, times, "units", 27, "days since 2024-03-04 12:00");
  const int both[] = {time, depths};
  nc_def_var(file, "flow", NC_SHORT, 2, both, &flow);
  const short fill = -9;
  nc_put_att_short(file, flow, "_FillValue", NC_SHORT, 1, &fill);
  nc_def_var(file, "depth", NC_FLOAT, 1, &depths, &depth);
  nc_enddef(file);
  const std::size_t start[] = {0, 0};
  const std::size_t count[] = {3, 2};
  const double t[] = {0, 1, 2};
  const short f[] = {1, 10, 2, -9, 3, 30};
  const float d[] = {5, 6};
  nc_put_vara_double(file, times, start, count, t);
  nc_put_vara_short(file, flow, start, count, f);
  nc_put_var_float(file, depth, d);
  EXPECT_EQ(nc_close(file), NC_NOERR);
  return name;
}

using Values = std::vector<double>;

TEST(Hdf5Test, ArraysAreListedAndReadAsColumns) {
  const TemporaryFolder folder;
  const auto file = OpenHdf5(MadeHdf5(folder));
  EXPECT_EQ(ListOf(*file),
            "array\tabsurd\t\tnumbers\t1000000000000\t\nattribute\tunits\tmV\n"
            "array\tgood\t\tnumbers\t3\t\n"
            "array\trecords\tcount\tnumbers\t3\t\narray\trecords\tpair\tnumbers\t3\t\t2\t\n"
            "array\trun/t\t\tnumbers\t3\t\narray\trun/table\t\tnumbers\t3\t\t2\t\n");
  EXPECT_EQ(file->Column({"run/t", "", ":", 0}), (Values{1, 2.5, 3}));
  EXPECT_EQ(file->Column({"run/table", "", ":,1", 2}), (Values{2.5, 4}));
  EXPECT_EQ(file->Column({"run/table", "", "2,:", 0}), (Values{5, 6}));
  EXPECT_EQ(file->Column({"good", "", ":", 0}), (Values{0, 1, 1}));
  EXPECT_EQ(file->Column({"records", "count", ":", 0}), (Values{7, 8, 9}));
  EXPECT_EQ(file->Column({"records", "pair", ":,1", 0}), (Values{2, 4, 6}));
  EXPECT_EQ(file->Column({"records", "pair", "2,:", 0}), (Values{5, 6}));
  EXPECT_EQ(file->Column({"absurd", "", ":", 2}), (Values{0, 0}));
  EXPECT_EQ(Refusal([&] {
              file->Column({"absurd", "", ":", 0});
            }),
            "The array \"absurd\" claims 1000000000000 values, more than can be read");
  for (const std::string line : {":,2", "3,:", ":", ":,:", "0,1", ":,0,0", "x,:", ",:", ""}) {
    EXPECT_EQ(Refusal([&] {
                file->Column({"run/table", "", line, 0});
              }),
              "The array \"run/table\" has no line [" + line + ']');
  }
  EXPECT_EQ(Refusal([&] {
              file->Column({"records", "none", ":", 0});
            }),
            "The array \"records\" holds no numbers called \"none\"");
  EXPECT_EQ(Refusal([&] {
              file->Column({"run", "", ":", 0});
            }),
            "There is no array \"run\" in the file");
}

TEST(NetcdfTest, ArraysAreListedAndReadAsColumns) {
  const TemporaryFolder folder;
  for (const int mode : {0, NC_64BIT_OFFSET, NC_64BIT_DATA, NC_NETCDF4}) {
    const std::string name = MadeNetcdf(folder, mode);
    const auto file = mode == NC_NETCDF4 ? OpenHdf5(name) : OpenNetcdf(name);
    const std::string list = ListOf(*file);
    for (const char* const line :
         {"array\ttime\t\tnumbers\t3\ttime\nattribute\tunits\tdays since 2024-03-04 12:00\n",
          "array\tflow\t\tnumbers\t3\ttime\t2\tdepth\nattribute\t_FillValue\t-9\n",
          "array\tdepth\t\tnumbers\t2\tdepth\n"}) {
      EXPECT_NE(list.find(line), list.npos) << mode << ": " << list;
    }
    EXPECT_EQ(file->Column({"flow", "", ":,1", 0}), (Values{10, -9, 30})) << mode;
    EXPECT_EQ(file->Column({"flow", "", "1,:", 0}), (Values{2, -9})) << mode;
    EXPECT_EQ(file->Column({"time", "", ":", 2}), (Values{0, 1})) << mode;
  }
}

TEST(NetcdfTest, WhatIsCutShortIsRefused) {
  const TemporaryFolder folder;
  for (const int mode : {0, NC_64BIT_OFFSET, NC_64BIT_DATA}) {
    const std::string whole = testing::ReadFile(MadeNetcdf(folder, mode));
    EXPECT_EQ(ClaimedSize(whole), whole.size()) << mode;
    for (std::size_t size = 0; size < whole.size(); size += 5) {
      const std::string cut = folder.Write("cut.nc", whole.substr(0, size)).string();
      EXPECT_NE(Refusal([&] { OpenNetcdf(cut); }), "") << mode << ", " << size;
    }
  }
}

TEST(NetcdfTest, NoDamageOfAHeaderIsHarmful) {
  const TemporaryFolder folder;
  const std::string whole = testing::ReadFile(MadeNetcdf(folder, NC_64BIT_DATA));
  for (std::size_t i = 0; i < whole.size(); ++i) {
    for (const char change : {'\x01', '\x7F', '\xFF'}) {
      std::string damaged = whole;
      damaged[i] = static_cast<char>(damaged[i] ^ change);
      try {
        EXPECT_GE(ClaimedSize(damaged), 0U);
      } catch (const Error& error) {
        EXPECT_NE(std::string(error.what()), "");
      }
    }
  }
}

}  // namespace
}  // namespace tarnwick
