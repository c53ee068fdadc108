// What carries links where this was compiled: the session bus, or the platform's own DDE. Knows both by name; knows no link.
#pragma once

#include <functional>
#include <memory>

#include "sources/links/link_transport.h"

namespace tarnwick {

/// Makes conversations for links that are asked one after the other, in the thread that asks.
std::function<std::unique_ptr<LinkTransport>()> LinkCarrier();

}  // namespace tarnwick
