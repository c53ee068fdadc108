#include "sources/links/link_carrier.h"

#ifdef _WIN32
#include "sources/links/dde_transport.h"
#else
#include "sources/links/bus_transport.h"
#endif

namespace tarnwick {

std::function<std::unique_ptr<LinkTransport>()> LinkCarrier() {
#ifdef _WIN32
  return [] { return std::make_unique<DdeTransport>(); };
#else
  return [connection = std::make_shared<BusConnection>()] {
    return std::make_unique<BusTransport>(connection);
  };
#endif
}

}  // namespace tarnwick
