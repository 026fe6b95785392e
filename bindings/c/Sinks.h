#pragma once

#include "frame/typelib/TypeLibrary.h"
#include "quillbox/automation.h"

namespace quillbox::c {

// Connects a sink to an event; the number names the connection.
std::int32_t connectSink(const Ref<Object>& object, const EventInfo& event, QbObject* sink);
// False where there is no such connection any more.
bool disconnectSink(std::int32_t connection);

}  // namespace quillbox::c
