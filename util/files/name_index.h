#pragma once
// The name index: one text in which every name is stored with the position of its entry and a
// one-byte kind, so that a table can find its entries by name without a container per entry.
//
// Entries are laid end to end, in the order they were added, each made of:
//   kind (1 byte, 1..255), position high byte, position low byte, 0, the name, 0.
// Positions run from 1 to 32000. An empty index is "". Names are compared exactly; callers
// normalise them (trimmed, upper case) before adding or looking them up.

#include <cstdint>
#include <string>

namespace lumbra {

// Appends `nome` with kind `tip` and position `pos`. `ok` = 1 when appended; 0 (and `idx`
// unchanged) when `tip` is outside 1..255, `pos` outside 1..32000, or `nome` holds the byte 0,
// which would break the entry structure.
void IdxAdd(std::string& idx, const std::string& nome, std::int16_t tip, std::int16_t pos,
            std::int16_t& ok);

// Finds the first entry named `nome`: `tip` and `pos` are its kind and position, both 0 when
// there is none.
void IdxCon(const std::string& idx, const std::string& nome, std::int16_t& tip, std::int16_t& pos);

// The two-byte code of a position: high byte then low byte. `ok` = 0 and `cod` = "" outside
// 1..32000.
void IdxPosCod(std::int16_t pos, std::string& cod, std::int16_t& ok);

// The position from a two-byte code: 256 x first byte + second byte. A code shorter than two
// bytes, or one whose value does not fit a 16-bit integer, gives 0.
void IdxPosDec(const std::string& cod, std::int16_t& pos);

}  // namespace lumbra
