#include "tables.hpp"

#include <cxxabi.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

// No exported operation without a row that says what becomes of it when there is no memory.

namespace allocation_failure_test {
namespace {

void remove_all(std::string& text, std::string const& part) {
    for (auto at = text.find(part); at != std::string::npos; at = text.find(part)) {
        text.erase(at, part.size());
    }
}

std::string signature_of(std::string const& symbol) {
    int status = 0;
    std::unique_ptr<char, void (*)(void*)> const demangled(
        abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, &status), &std::free);
    return status == 0 ? demangled.get() : symbol;
}

/// \return the qualified name of a function, without what it gives and takes, below the namespace
/// of the library; a name of data as it stands.
std::string plain_name(std::string const& symbol) {
    std::string name = signature_of(symbol);
    remove_all(name, "tavi::ioapi::v2::");
    remove_all(name, "[abi:cxx11]");
    std::size_t first = 0;
    int depth = 0;
    for (std::size_t at = 0; at < name.size(); ++at) {
        if (name[at] == '<') ++depth;
        if (name[at] == '>' && name[at - 1] != '-') --depth;
        if (depth != 0) continue;
        if (name[at] == ' ') first = at + 1;
        if (name[at] == '(') return name.substr(first, at - first);
    }
    return name;
}

/// Whether no row of its own is asked for: data, what cannot fail, and private parts, which
/// the handles reach.
bool is_exempt(std::string const& name) {
    static ::testing::Matcher<std::string const&> const exempt =
        ::testing::MatchesRegex("(typeinfo|vtable).*|.*~.*|(.*::)?[a-z_]*impl(::.*)?|"
                                "make_object_implementation<.*|__tavi_ioapi_library_revision.*|"
                                "utility::string::S_empty|"
                                // It gives no node that could be touched.
                                "browse_result::operator\\[\\]");
    return exempt.Matches(name);
}

/// \return the forms of each name: constructors have two symbols of one signature.
std::map<std::string, std::set<std::string>> exported_forms() {
    std::ifstream list(EXPORTED_NAMES_PATH);
    std::map<std::string, std::set<std::string>> forms;
    for (std::string line; std::getline(list, line);) {
        std::string const symbol = line.substr(0, line.find(' '));
        std::string const name = plain_name(symbol);
        if (!is_exempt(name)) forms[name].insert(signature_of(symbol));
    }
    return forms;
}

std::set<std::string> exported_names() {
    std::set<std::string> names;
    for (auto const& each : exported_forms()) names.insert(each.first);
    return names;
}

/// \return how many forms of each name the rows try.
std::map<std::string, std::size_t> tried_forms() {
    std::map<std::string, std::size_t> forms;
    for (operation const& row : every_operation()) {
        for (auto const& tried : row.tries) {
            std::size_t const several = tried.find(" x");
            std::string const name = tried.substr(0, several);
            forms[name] += several == std::string::npos ? 1 : std::stoul(tried.substr(several + 2));
        }
    }
    return forms;
}

std::set<std::string> tried_names() {
    std::set<std::string> names;
    for (auto const& each : tried_forms()) names.insert(each.first);
    return names;
}

std::vector<std::string> missing_in(std::set<std::string> const& all,
                                    std::set<std::string> const& wanted) {
    std::vector<std::string> missing;
    for (std::string const& name : wanted) {
        if (all.count(name) == 0) missing.push_back(name);
    }
    return missing;
}

TEST(ExportedNames, AreReadWithoutArguments) {
    EXPECT_EQ(plain_name("_ZN4tavi5ioapi2v211read_result3setEjNS1_8io_errorE"), "read_result::set");
    EXPECT_EQ(plain_name("_ZN4tavi5ioapi2v26detail6get_asIhEET_RKNS1_8io_valueERNS1_8io_errorE"),
              "detail::get_as<unsigned char>");
    EXPECT_EQ(plain_name("_ZNK4tavi5ioapi2v219subscription_result14const_iteratorptEv"),
              "subscription_result::const_iterator::operator->");
}

TEST(ExportedNames, AreManyAndNotAllExempt) {
    EXPECT_GT(exported_names().size(), 150U);
    EXPECT_EQ(exported_names().count("io_object::set"), 1U);
}

TEST(ExportedNames, AreAllTried) {
    EXPECT_EQ(missing_in(tried_names(), exported_names()), std::vector<std::string>());
}

TEST(ExportedNames, AreTriedInAllTheirForms) {
    auto tried = tried_forms();
    for (auto const& [name, forms] : exported_forms()) {
        EXPECT_GE(tried[name], forms.size()) << name << ": " << ::testing::PrintToString(forms);
    }
}

TEST(ExportedNames, AreWhatTheRowsSayThatTheyTry) {
    EXPECT_EQ(missing_in(exported_names(), tried_names()), std::vector<std::string>());
}

} // namespace
} // namespace allocation_failure_test
