#include "records/text_files.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <memory>

namespace ostrane {

std::string RunTimeErrorText(int number) {
  switch (number) {
    case 5: return "Argument ou appel de procédure incorrect";
    case kErrOverflow: return "Dépassement de capacité";
    case 9: return "L'indice n'appartient pas à la sélection";
    case kErrTypeMismatch: return "Incompatibilité de type";
    case 52: return "Nom ou numéro de fichier incorrect";
    case kErrFileNotFound: return "Fichier introuvable";
    case 55: return "Fichier déjà ouvert";
    case kErrDeviceIo: return "Erreur d'entrée/sortie de périphérique";
    case kErrDiskFull: return "Disque plein";
    case kErrTooManyFiles: return "Trop de fichiers";
    case kErrPermission: return "Permission refusée";
    case kErrPathFileAccess: return "Erreur d'accès au chemin/fichier";
    case kErrPathNotFound: return "Chemin d'accès introuvable";
    default: return "Erreur définie par l'application ou par l'objet";
  }
}

FileError FileError::Of(int number) { return FileError{number, RunTimeErrorText(number)}; }

int FileErrorNumber(int errnoValue) {
  switch (errnoValue) {
    case ENOENT: return kErrFileNotFound;
    case ENOTDIR: return kErrPathNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case ETXTBSY:
    case EBUSY: return kErrPathFileAccess;
    case ENOSPC:
    case EDQUOT:
    case EFBIG: return kErrDiskFull;
    case EMFILE:
    case ENFILE: return kErrTooManyFiles;
    default: return kErrDeviceIo;
  }
}

std::filesystem::path TemporaryFileOf(const std::filesystem::path& file) {
  std::filesystem::path temporary = file;
  temporary += ".tmp";
  return temporary;
}

int WriteWholeFile(const std::filesystem::path& file, std::string_view bytes) {
  const std::filesystem::path temporary = TemporaryFileOf(file);
  const int fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  if (fd < 0) return errno;
  int failure = 0;
  for (size_t done = 0; done < bytes.size() && !failure;) {
    const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0)
      failure = n < 0 ? errno : EIO;
    else
      done += size_t(n);
  }
  // On the disk before it takes the file's place.
  if (!failure && ::fsync(fd) != 0) failure = errno;
  if (::close(fd) != 0 && !failure) failure = errno;
  if (!failure && ::rename(temporary.c_str(), file.c_str()) != 0) failure = errno;
  if (failure) {
    ::unlink(temporary.c_str());
    return failure;
  }
  // The rename itself, on the disk.
  const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
  const int dir = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (dir >= 0) {
    ::fsync(dir);
    ::close(dir);
  }
  return 0;
}

namespace {

struct FileCloser {
  void operator()(std::FILE* f) const { std::fclose(f); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

FileError FromErrno(int savedErrno) { return FileError::Of(FileErrorNumber(savedErrno)); }

// An opening that fails because a folder of the path is missing is "path not
// found", not "file not found".
FileError OpenFailure(const std::filesystem::path& file, int savedErrno) {
  if (savedErrno == ENOENT && file.has_parent_path()) {
    std::error_code ec;
    if (!std::filesystem::is_directory(file.parent_path(), ec)) return FileError::Of(kErrPathNotFound);
  }
  return FromErrno(savedErrno);
}

FileError Write(const std::filesystem::path& file, const std::string& bytes, const char* mode) {
  errno = 0;
  FilePtr out(std::fopen(file.c_str(), mode));
  if (!out) return OpenFailure(file, errno);
  if (!bytes.empty() && std::fwrite(bytes.data(), 1, bytes.size(), out.get()) != bytes.size())
    return FromErrno(errno);
  std::FILE* raw = out.release();
  if (std::fclose(raw) != 0) return FromErrno(errno);
  return {};
}

class Disk final : public TextFiles {
 public:
  FileError Read(const std::filesystem::path& file, std::string& bytes) override {
    bytes.clear();
    errno = 0;
    FilePtr in(std::fopen(file.c_str(), "rb"));
    if (!in) return OpenFailure(file, errno);
    char buffer[4096];
    size_t got = 0;
    while ((got = std::fread(buffer, 1, sizeof buffer, in.get())) > 0) bytes.append(buffer, got);
    if (std::ferror(in.get())) return FromErrno(errno);
    return {};
  }
  FileError Append(const std::filesystem::path& file, const std::string& bytes) override {
    return Write(file, bytes, "ab");
  }
  FileError Replace(const std::filesystem::path& file, const std::string& bytes) override {
    errno = 0;
    if (::access(file.c_str(), F_OK) == 0 && ::access(file.c_str(), W_OK) != 0) return OpenFailure(file, errno);
    if (const int failure = WriteWholeFile(file, bytes)) return OpenFailure(file, failure);
    return {};
  }
  FileError Remove(const std::filesystem::path& file) override {
    errno = 0;
    if (std::remove(file.c_str()) != 0) return OpenFailure(file, errno);
    return {};
  }
};

}  // namespace

TextFiles& DiskFiles() {
  static Disk disk;
  return disk;
}

}  // namespace ostrane
