// Holds against any store file: it is refused with a reason, or what was loaded is saved so that it loads
// as the same records; each value of theirs can be read, and deleting them all can be taken back.
#include <cstddef>
#include <cstdint>
#include <string>

#include "fuzz/MemoryLibrary.h"
#include "fuzz/Records.h"

namespace clipwave::fuzz {
namespace {

// Loads the file and writes it as it came. False when it is refused.
bool writeAnew(MemoryLibrary& library) {
  auto opened = library.openStore();
  if (!opened) {
    require(opened.error().localizedDescription.find(library.storePath()) != std::string::npos,
            "a refusal names the file", {opened.error().localizedDescription});
    return false;
  }
  const StoreContent content = (*opened)->takeContent();
  require((*opened)->write(content).ok(), "what was loaded can be written");
  opened->reset();

  auto again = library.openStore();
  const std::string written = library.storeText();
  require(again.ok(), "what was written can be loaded", {written});
  const StoreContent same = (*again)->takeContent();
  requireSame(storedValues(content.objects), storedValues(same.objects), "the records are the same");
  require(content.nextObjectID == same.nextObjectID, "the next record's id is the same", {written});
  require((*again)->write(same).ok(), "it can be written again");
  requireSame(library.storeText(), written, "it is written in the same way again");
  return true;
}

// As the application works on it: what reading filled in is saved, and the last word is that of undo.
void readDeleteAndUndo(MemoryLibrary& library) {
  library.open();
  const std::string read = readValues(*library.context);
  library.saveAndReopen();
  const std::string saved = library.storeText();

  ManagedObjectContext& context = *library.context;
  for (ManagedObject* record : allRecords(context))
    if (record->managedObjectContext() != nullptr) context.deleteObject(*record);
  require(allRecords(context).empty(), "every record can be deleted");
  library.turn();
  while (context.undoManager().canUndo()) context.undo();
  requireSame(readValues(context), read, "undo brings everything back");
  library.saveAndReopen();
  requireSame(library.storeText(), saved, "undo leaves no trace in the file");
  requireSame(readValues(*library.context), read, "what was read is still there after saving");
  ManagedObject& image = library.newImage("http://podcasts.clipwave.example/");
  require(library.context->objectWithID(image.objectID()) == &image, "a new record finds room");
  library.saveAndReopen();
}

void loadSaveLoad(std::string_view text) {
  MemoryLibrary library;
  library.context.reset();
  require(library.fileManager.writeAtomically(text, library.storePath()).ok(), "there is room in memory");
  if (writeAnew(library)) readDeleteAndUndo(library);
}

}  // namespace
}  // namespace clipwave::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  clipwave::fuzz::loadSaveLoad({reinterpret_cast<const char*>(data), size});
  return 0;
}
