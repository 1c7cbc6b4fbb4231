/**
 * @file
 * netxml in C++17: a header-only face over the C functions.
 *
 * @code
 * auto document = netxml::Document::parse("<config><mtu>1500</mtu></config>");
 * if (!document) return std::cerr << document.error() << '\n', 1;
 * for (netxml::Element element : document->root().elements())
 *     std::cout << element.path() << " = " << element.text() << '\n';
 * @endcode
 *
 * docs/cpp.md shows each part at work.
 *
 * - Texts are UTF-8 here. A tree holds GB18030 (base.h), which is the same for ASCII: such texts
 *   are viewed in the tree itself, without a copy; others are converted as they go in or out.
 * - Whatever may fail returns a Result, or ends in one; nothing throws. The face compiles without
 *   exceptions and run-time types. The containers of the standard library that it uses (std::string
 *   and std::vector) end the program, or throw, in their own way when memory runs out; memory that
 *   the library lacks is an Error.
 * - A Document owns its tree. Element, Node, TextNode and Attribute are one pointer each: they are
 *   copied freely, and end with the document or with what they stand for being removed, as pointers
 *   do. An empty handle is false, and reads as nothing: it has no name, no text and no children.
 * - A const Document gives ConstElement and its kin, which edit nothing.
 * - Threads, as in C: one tree belongs to one thread at a time; several may read a tree that nobody
 *   edits; distinct documents, readers and writers are independent. Beyond ASCII each thread keeps
 *   a converter for either direction, until it ends.
 * - A build of the library without the schema half, or without files, is used with the same
 * headers: only a program that calls what is left out fails to link.
 *
 * Everything lies in the inline namespace `netxml::face`, so that no name here meets one of the
 * library's own inside a program that is linked with the static library.
 */
#ifndef NETXML_NETXML_HPP
#define NETXML_NETXML_HPP

#include "netxml/cpp/document.hpp"
#include "netxml/cpp/reader.hpp"
#include "netxml/cpp/schema.hpp"
#include "netxml/cpp/writer.hpp"

#endif
