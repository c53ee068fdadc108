// An object of the HDF5 library, closed with its owner. Knows no formats.
#pragma once

#include <hdf5.h>

#include <utility>

namespace tarnwick {

class Hdf5Handle {
 public:
  /// Takes over what a function answered; a negative value is none.
  Hdf5Handle(hid_t id, herr_t (*close)(hid_t)) : id_(id), close_(close) {}
  ~Hdf5Handle() {
    if (id_ >= 0) close_(id_);
  }
  Hdf5Handle(Hdf5Handle&& other) noexcept
      : id_(std::exchange(other.id_, -1)), close_(other.close_) {}
  Hdf5Handle(const Hdf5Handle&) = delete;
  Hdf5Handle& operator=(const Hdf5Handle&) = delete;
  Hdf5Handle& operator=(Hdf5Handle&& other) noexcept {
    std::swap(id_, other.id_);
    std::swap(close_, other.close_);
    return *this;
  }

  bool Good() const { return id_ >= 0; }
  hid_t Id() const { return id_; }

 private:
  hid_t id_;
  herr_t (*close_)(hid_t);
};

inline Hdf5Handle Dataset(hid_t id) {
  return {id, &H5Dclose};
}
inline Hdf5Handle Space(hid_t id) {
  return {id, &H5Sclose};
}
inline Hdf5Handle Type(hid_t id) {
  return {id, &H5Tclose};
}
inline Hdf5Handle Attribute(hid_t id) {
  return {id, &H5Aclose};
}
inline Hdf5Handle Properties(hid_t id) {
  return {id, &H5Pclose};
}

}  // namespace tarnwick
