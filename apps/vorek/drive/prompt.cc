#include "drive/prompt.h"

#include <editline/readline.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>

namespace vorek::drive {
namespace {

struct Freed {
  void operator()(char* text) const { std::free(text); }
};

// The library calls plain functions, so the driver of the one prompt is kept here.
Driver* g_driver = nullptr;

char* NextCompletion(const char* word, int state) {
  static std::vector<std::string> words;
  static std::size_t next = 0;
  if (state == 0) {
    const std::string line(rl_line_buffer, static_cast<std::size_t>(rl_point));
    words = g_driver->Completions(line.substr(0, line.size() - std::strlen(word)), word);
    next = 0;
  }
  return next < words.size() ? strdup(words[next++].c_str()) : nullptr;
}

char** Complete(const char* word, int, int) {
  rl_attempted_completion_over = 1;
  return rl_completion_matches(word, NextCompletion);
}

// The lines of a "when" are read to its end.
std::string ReadBlock(std::string first) {
  std::string text = std::move(first);
  for (int depth = 1; depth > 0;) {
    const std::unique_ptr<char, Freed> line(readline("> "));
    if (line == nullptr) break;
    std::istringstream words(line.get());
    std::string command;
    words >> command;
    depth += command == "when" ? 1 : command == "end" ? -1 : 0;
    text += std::string("\n") + line.get();
  }
  return text;
}

void RunText(Driver& driver, const std::string& text) {
  try {
    std::istringstream script(text);
    driver.Run(script);
  } catch (const Error& error) {
    std::cerr << error.Description() << std::endl;
  }
}

}  // namespace

void RunPrompt(Driver& driver) {
  g_driver = &driver;
  rl_attempted_completion_function = Complete;
  rl_completion_append_character = 0;  // a path goes on behind its dot
  char word_breaks[] = " \t\"";
  rl_completer_word_break_characters = word_breaks;
  while (true) {
    const std::unique_ptr<char, Freed> line(readline("vorek> "));
    if (line == nullptr) break;
    if (*line != '\0') add_history(line.get());
    const bool block = std::strncmp(line.get(), "when ", 5) == 0;
    RunText(driver, block ? ReadBlock(line.get()) : line.get());
    std::cout.flush();
  }
  std::cout << std::endl;
}

}  // namespace vorek::drive
