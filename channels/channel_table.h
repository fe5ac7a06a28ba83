#pragma once
// The channel module's state, shared by the files that implement its operations by concern.

#include <cstdint>
#include <string>
#include <vector>

#include "channels/PgmFic.h"

namespace lumbra::channel_table {

std::vector<CanReg>& Slots();
GlbComFr*& HostForm();
std::int16_t& Max();

bool InRange(std::int16_t can);

// The record of channel can for an open, close or write: nullptr when can is outside 1..CanMax()
// (silently) or beyond the table, that is never prepared (reported in the box under fn).
CanReg* PreparedSlot(std::int16_t can, const std::string& fn);

// Passes a successful write on to the observer, if there is one.
void Written(std::int16_t can, std::string_view bytes);

}  // namespace lumbra::channel_table
