#ifndef VOREK_TESTS_ACCESS_BLANK_FILE_H_
#define VOREK_TESTS_ACCESS_BLANK_FILE_H_

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "adapters/access/jet_file.h"

namespace vorek {

struct BlankField {
  std::string name;
  std::uint8_t type = 10;    // as the file numbers types
  std::uint16_t size = 100;  // bytes
  std::map<std::string, std::string> properties = {};
  bool autonumber = false;
  bool compressed = false;
};

// An Access file of one empty table, written byte by byte from the format.
struct BlankFile {
  std::string table = "Rows";
  std::vector<BlankField> fields;
  std::int32_t key = -1;   // the field that a unique index is over, of long numbers; -1 for none
  std::int32_t flags = 0;  // of the table in the catalogue
  std::uint32_t map_bits = 512;  // that an inline usage map has

  std::string Bytes() const;

 private:
  // The rows of the catalogue: its own, and the table's.
  void Catalogue(jet::JetFile& file) const;
};

// What is wrong with the table of a file: every page owned once, counts, the index's order, every
// row reachable. Empty if nothing is.
std::string WhatIsWrong(const std::string& bytes);

}  // namespace vorek

#endif  // VOREK_TESTS_ACCESS_BLANK_FILE_H_
