// What one column of a table shows, how wide it is and by what it sorts.
#pragma once

#include <QString>
#include <optional>
#include <string>

namespace clipwave {

struct Column {
  enum class Kind {
    CheckBox,  // a boolean that a click inverts
    Title,     // with a dimmed second line where the table has a key for it
    Text,
    Day,
    Duration,
    FileSize,
    Count,   // of the records in a to-many relationship
    Trouble  // a mark where the movie cannot be shown, with its reason
  };

  Kind kind;
  std::string key;
  // Where the header has no room for it, the tooltip and the accessible name.
  QString title;
  QString symbol = {};  // the image in the header; none: the title
  // Whether a click on the header sorts by the key, and whether only by what is stored for it.
  bool sortable = true;
  bool sortsStored = false;
  // The widest text that is usual, which decides the width; the Title column takes what is left.
  QString sample = {};
  // Of a check box: the name of the undo step.
  QString actionName = {};
};

}  // namespace clipwave
