#pragma once

#include <string>

namespace dao::postgres {

// The script that makes the schema dao of a database: the domains whose names tell the engine's types, and
// the functions that the engine's statements call there. Several statements, to be run as one by the owner of
// the database, whose texts have to be UTF-8; fails where the schema stands already. It needs no extension
// and no superuser.
//
// Texts compare on the server as alphabet::compare has it, by dao.key(text) COLLATE "C": an index on a text
// stands on that expression, NULLS FIRST.
std::string serverFunctions();

// The domain of texts of at most `size` characters, and the statement that makes it.
std::string textDomain(int size);
std::string createTextDomain(int size);

}  // namespace dao::postgres
