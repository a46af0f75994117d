#pragma once

#include <string>

// The calls of the inspector. Each appends what it prints and answers the exit status.
namespace dunkman::inspect {

int printJson5(const std::string& path, std::string& out);
int printWritten(const std::string& path, int indent, std::string& out);
int printShader(const std::string& path, std::string& out);
int printDds(const std::string& path, std::string& out);

// The reference of the data files, and the schema of that name for editors; 1 when there is none of that name.
int printReference(std::string& out);
int printSchema(const std::string& name, std::string& out);

// These two look at the data directory that is current.
int printScene(std::string& out);
int printFaults(std::string& out,
                std::string& notes); // status 1 when there are any; notes: what was not checked

} // namespace dunkman::inspect
