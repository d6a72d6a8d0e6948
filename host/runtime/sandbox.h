// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <span>

namespace quillbar::host {

/// The folder below which a script's files stay, when the user has set one (`quillbar --sandbox FOLDER`). Whoever asks
/// about a file for a script, opens it or hands its path to a plugin, first has the path allowed here: links are
/// followed, so what counts is where the file really is. On Linux the kernel (Landlock) then keeps the whole process to
/// the folder as well, whatever happens to links between the question and the use.
class Sandbox {
 public:
  /// From now on paths are allowed below this folder only. Throws HostError (kFile) when there is no such folder.
  static void Enter(const std::filesystem::path &folder);
  /// Allows all paths again, as far as `ConfineProcess` hasn't been called.
  static void Leave() { Folder().clear(); }

  /// Has the kernel keep the process to the folder, for good. `readable` are files that stay readable although they may
  /// lie elsewhere, such as the script's own, `writable` is one that may be written too, empty for none; scripts may use
  /// neither. False where the kernel can't: then the paths are checked alone.
  static bool ConfineProcess(std::span<const std::filesystem::path> readable, const std::filesystem::path &writable);

  static bool IsActive() { return !Folder().empty(); }

  /// Whether a script may use this path: always without a sandbox.
  static bool Allows(const std::filesystem::path &path);

  /// Throws HostError (kFile), in the words of a missing permission, for a path that isn't allowed.
  static void Require(const std::filesystem::path &path);

 private:
  static std::filesystem::path &Folder();
};

}  // namespace quillbar::host
