#pragma once
// The small text files of the start directory, opened, read or written and
// closed within one call. A failure comes back as the run-time error number
// the forms test (53 no such file, 75 no access...) with its French text, so
// that the forms keep their numbered messages. Tests hand in their own
// TextFiles to make any call fail with any number.

#include <filesystem>
#include <string>
#include <string_view>

namespace ostrane {

// Run-time error numbers met by the file work of the forms.
inline constexpr int kErrOverflow = 6;
inline constexpr int kErrTypeMismatch = 13;
inline constexpr int kErrDeviceIo = 57;
inline constexpr int kErrFileNotFound = 53;
inline constexpr int kErrDiskFull = 61;
inline constexpr int kErrTooManyFiles = 67;
inline constexpr int kErrPermission = 70;
inline constexpr int kErrPathFileAccess = 75;
inline constexpr int kErrPathNotFound = 76;

struct FileError {
  int number = 0;    // 0: no error
  std::string text;  // the system's text for it, French

  explicit operator bool() const { return number != 0; }
  static FileError Of(int number);  // with the standard text of that number
};

// The French text of a run-time error number ("Fichier introuvable" for 53).
std::string RunTimeErrorText(int number);

// The number for a C library error code met while opening, reading, writing
// or removing a file: no such file 53, a missing folder 76, no right to write
// or a read-only file or folder 75, a full disk 61, anything else 57.
int FileErrorNumber(int errnoValue);

// Writes `bytes` whole into a temporary file of the same folder (the file's
// name and ".tmp"), flushed to the disk, which then takes the file's place
// in one rename, itself flushed: a reader, a kill or a power cut finds the
// old file or the new one whole, never half of one. Returns 0, or the C
// library's error code (the file that was there stays as it was).
int WriteWholeFile(const std::filesystem::path& file, std::string_view bytes);
// The temporary file WriteWholeFile uses for `file`.
std::filesystem::path TemporaryFileOf(const std::filesystem::path& file);

class TextFiles {
 public:
  virtual ~TextFiles() = default;
  // The whole file as bytes.
  virtual FileError Read(const std::filesystem::path& file, std::string& bytes) = 0;
  // Adds the bytes at the end, creating the file when there is none.
  virtual FileError Append(const std::filesystem::path& file, const std::string& bytes) = 0;
  // Replaces the whole file by the bytes, creating it when there is none: on
  // the disk through WriteWholeFile. A file that is there but may not be
  // written is not replaced (no access, as a direct write would find).
  virtual FileError Replace(const std::filesystem::path& file, const std::string& bytes) = 0;
  virtual FileError Remove(const std::filesystem::path& file) = 0;
};

// The real files on disk.
TextFiles& DiskFiles();

}  // namespace ostrane
