// Writes the toolbar's button faces and the extension's icon as PNG files into a folder.

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "addin/faces.h"

namespace {

constexpr std::uint32_t kMostBytesOfBlock = 0xFFFF;

void Append32(std::string& bytes, std::uint32_t value) {
  for (int shift = 24; shift >= 0; shift -= 8) bytes.push_back(static_cast<char>(value >> shift));
}

std::uint32_t Crc(const std::string& bytes) {
  std::uint32_t crc = 0xFFFFFFFF;
  for (const char byte : bytes) {
    crc ^= static_cast<std::uint8_t>(byte);
    for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ ((crc & 1) != 0 ? 0xEDB88320U : 0U);
  }
  return ~crc;
}

std::uint32_t Adler(const std::string& bytes) {
  constexpr std::uint32_t kBase = 65521;
  std::uint32_t low = 1;
  std::uint32_t high = 0;
  for (const char byte : bytes) {
    low = (low + static_cast<std::uint8_t>(byte)) % kBase;
    high = (high + low) % kBase;
  }
  return high << 16 | low;
}

// A zlib stream of one stored block.
std::string Stored(const std::string& bytes) {
  const auto size = static_cast<std::uint32_t>(bytes.size());
  if (size > kMostBytesOfBlock) throw std::length_error("picture too large");
  std::string stream = {0x78, 0x01, 0x01};
  for (const std::uint32_t value : {size, ~size}) {
    stream.push_back(static_cast<char>(value));
    stream.push_back(static_cast<char>(value >> 8));
  }
  stream += bytes;
  Append32(stream, Adler(bytes));
  return stream;
}

std::string Chunk(const std::string& type, const std::string& data) {
  std::string chunk;
  Append32(chunk, static_cast<std::uint32_t>(data.size()));
  chunk += type + data;
  Append32(chunk, Crc(type + data));
  return chunk;
}

// The face, each pixel `scale` by `scale`, with `margin` transparent pixels around.
std::string Png(const quorvel::Face& face, int scale, int margin) {
  const int size = quorvel::Face::kSize * scale + 2 * margin;
  std::string rows;
  for (int y = 0; y < size; ++y) {
    rows.push_back(0);  // no filter
    for (int x = 0; x < size; ++x) {
      const int column = (x - margin) / scale;
      const int row = (y - margin) / scale;
      const bool inside =
          x >= margin && y >= margin && column < quorvel::Face::kSize && row < quorvel::Face::kSize;
      const auto at = static_cast<std::size_t>(row) * quorvel::Face::kSize + static_cast<std::size_t>(column);
      const std::uint32_t argb = inside ? face.pixels.at(at) : 0;
      Append32(rows, argb << 8 | argb >> 24);
    }
  }
  std::string header;
  Append32(header, static_cast<std::uint32_t>(size));
  Append32(header, static_cast<std::uint32_t>(size));
  header += {8, 6, 0, 0, 0};  // 8 bits, with alpha
  return "\x89PNG\r\n\x1A\n" + Chunk("IHDR", header) + Chunk("IDAT", Stored(rows)) + Chunk("IEND", "");
}

struct Picture {
  const char* name;
  quorvel::Face (*face)();
  int scale;
  int margin;
};

constexpr std::array kPictures = {
    Picture{"SendSMS_16.png", quorvel::SendFace, 1, 0},
    Picture{"SendSMS_26.png", quorvel::SendFace, 1, 5},
    Picture{"ProxySettings_16.png", quorvel::ProxyFace, 1, 0},
    Picture{"ProxySettings_26.png", quorvel::ProxyFace, 1, 5},
    Picture{"Help_16.png", quorvel::HelpFace, 1, 0},
    Picture{"Help_26.png", quorvel::HelpFace, 1, 5},
    Picture{"icon.png", quorvel::SendFace, 2, 5},
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: quorvel_face_images FOLDER\n";
    return 2;
  }
  for (const Picture& picture : kPictures) {
    const std::filesystem::path path = std::filesystem::path(argv[1]) / picture.name;
    std::ofstream file(path, std::ios::binary);
    file << Png(picture.face(), picture.scale, picture.margin);
    if (!file.flush()) {
      std::cerr << "cannot write " << path << '\n';
      return 1;
    }
  }
  return 0;
}
