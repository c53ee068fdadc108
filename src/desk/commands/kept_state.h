// What features keep from one command to the next, while the main window lives: one object of each type that is asked for.
#pragma once

#include <map>
#include <memory>
#include <typeindex>

namespace tarnwick {

class KeptState {
 public:
  /// The object of that type; made when it is asked for first.
  template <class T>
  T& Of() {
    std::shared_ptr<void>& object = objects_[std::type_index(typeid(T))];
    if (!object) object = std::make_shared<T>();
    return *static_cast<T*>(object.get());
  }

 private:
  std::map<std::type_index, std::shared_ptr<void>> objects_;
};

}  // namespace tarnwick
