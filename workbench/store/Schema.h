#pragma once
#include <optional>
#include <string>

class Database;

// The layout of a store file, version by version. A file starts at version 0
// (no tables) and each migration moves it up by one inside a transaction, so
// a file is always at one whole version.
//
// 1: schema_version(version)
//    session_value(workspace, project, session, kind, name, value)
//      the three names case-folded; kind "setting", "property" or "data";
//      name exact; value an encoded Variant
//    global_value(kind, name, value)
//      kind "number" or "string"; name exact; value an encoded Variant
// 2: project(key, name), configuration(project, key, name),
//    session(project, key, name), active(slot = 1, project, configuration,
//    session); keys case-folded, names as first given, rowid order is the
//    order of addition
namespace Schema
{

inline constexpr int kCurrentVersion = 2;

// The version of the file, read without writing: nothing, with the reason,
// for a database of another program, one of a newer version, or one whose
// version record is damaged. A file with no tables is at version 0.
std::optional<int> Version(Database& db, std::string& error);

// Brings the database to kCurrentVersion. Refuses what Version refuses, and a
// file that lacks a table of its version.
bool Upgrade(Database& db, std::string& error);

} // namespace Schema
