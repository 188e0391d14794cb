#include "zvi/command/MyParser.h"

namespace zvi::lib {

MyParser::MyParser() : m_parser(std::make_unique<Parser>()) {}

MyParser::~MyParser() = default;

} // namespace zvi::lib
