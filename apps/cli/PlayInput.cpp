// SPDX-License-Identifier: Apache-2.0
#include "apps/cli/PlayInput.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "apps/cli/Interrupt.h"

PlayInput::PlayInput(const std::string& file) : isStandardInput(file.empty() || file == "-") {
  descriptor = isStandardInput ? STDIN_FILENO : open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY);
  if (descriptor < 0) failure = std::generic_category().message(errno);
}

PlayInput::~PlayInput() {
  if (!isStandardInput && descriptor >= 0) close(descriptor);
}

bool PlayInput::IsTerminal() const { return isStandardInput && isatty(descriptor) != 0; }

std::optional<std::string> PlayInput::ReadLine() {
  while (failure.empty() && !Interrupt::IsAsked()) {
    const std::size_t end = buffer.find('\n', position);
    if (end != std::string::npos || (isAtEnd && position < buffer.size())) {
      std::string line = buffer.substr(position, end == std::string::npos ? end : end - position);
      position = end == std::string::npos ? buffer.size() : end + 1;
      return line;
    }
    if (isAtEnd) return std::nullopt;
    if (buffer.size() - position > kMaxLineBytes) {
      failure = "a line is longer than " + std::to_string(kMaxLineBytes) + " bytes";
    } else if (!Fill()) {
      isAtEnd = true;
    }
  }
  return std::nullopt;
}

bool PlayInput::Fill() {
  constexpr std::size_t kChunk = 65'536;
  buffer.erase(0, position);
  position = 0;
  // A signal ends the wait here; in read() it would not.
  pollfd waiting{descriptor, POLLIN, 0};
  if (poll(&waiting, 1, -1) < 0) {
    if (errno != EINTR) failure = std::generic_category().message(errno);
    return true;
  }
  const std::size_t held = buffer.size();
  buffer.resize(held + kChunk);
  const ssize_t count = read(descriptor, buffer.data() + held, kChunk);
  buffer.resize(held + (count > 0 ? static_cast<std::size_t>(count) : 0));
  if (count < 0 && errno != EINTR) failure = std::generic_category().message(errno);
  return count != 0;
}
