#include "drive/commands.h"
#include "drive/script_component.h"

namespace vorek::drive {
namespace {

void SetClock(Session& session, const Words& words) { session.clock->Fix(Word(words, 1)); }

void QueueFile(Session& session, const Words& words) { session.files->Queue(Word(words, 1)); }

void QueueWorkbook(Session& session, const Words& words) {
  session.documents->Queue(Word(words, 1));
}

void CancelAt(Session& session, const Words& words) { session.stage->CancelAt(Number(words, 1)); }

void OfferComponent(Session& session, const Words& words) {
  const std::string prog_id = Word(words, 1);
  session.components->Add(prog_id, [&session, prog_id](std::int32_t) {
    return std::make_unique<ScriptComponent>(
        prog_id, [&session](const std::string& line) { session.Print(line); });
  });
}

}  // namespace

Commands StageCommands() {
  return {{"clock", SetClock},
          {"file", QueueFile},
          {"workbook", QueueWorkbook},
          {"cancel", CancelAt},
          {"component", OfferComponent}};
}

}  // namespace vorek::drive
