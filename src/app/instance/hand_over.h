// What a second start of the program hands to the one that runs: its words. Knows bytes; no socket and no window.
#pragma once

#include <QByteArray>
#include <optional>
#include <string>
#include <vector>

namespace tarnwick {

/// What two instances say to each other. The numbers stay: builds of different age talk by them.
enum class InstanceMessage : quint32 {
  Identify = 0x8065,  ///< answered by kInstanceAnswer
  Activate =
      0x8066,  ///< brings the window to the front; carries an activation token, perhaps empty
  CommandLine = 0x8067,  ///< carries words
};
inline constexpr quint32 kInstanceAnswer = 2501141;

/// The words as they are handed on: each one that names something there by its whole path, since the other works in a folder
/// of its own.
std::vector<std::string> WordsToHandOver(const std::vector<std::string>& words);

/// The joined line of the words with "-no " before it, then the words one by one, whatever bytes they are of.
QByteArray EncodeWords(const std::vector<std::string>& words);

/// The words of such a message; of one that holds a joined line alone, as it stands. Nothing for what is neither.
std::optional<std::vector<std::string>> DecodeWords(const QByteArray& bytes);

}  // namespace tarnwick
