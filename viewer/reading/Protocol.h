// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef VIEWER_PROTOCOL_H
#define VIEWER_PROTOCOL_H

#include <QtGlobal>

/**
 * The conversation between the window and `sorrel-viewer-reader`, which reads one package, or compares two.
 *
 * The reader writes a line for each answer on standard output: a JSON object in UTF-8 with the name of its topic. It
 * reads a line for each request from standard input, also a JSON object, and ends at the end of that input. Nothing
 * binds the reader once a package has taken it over, so the window checks every line (AnswerCheck).
 *
 * Without `--compare`, the answers are, in this order:
 *
 * | topic         | content                                                                                         |
 * |---------------|-------------------------------------------------------------------------------------------------|
 * | `hello`       | `protocol`: Version. The program runs, and has read nothing.                                    |
 * | `head`        | `packageName`, `versionName`, `versionCode` (a decimal number), `minSdk`, `targetSdk`, `label`, |
 * |               | `isSet`, `fileSize`, `error`: null or an object of `code` and `message`, `sandbox`: names of    |
 * |               | what confines the reader                                                                        |
 * | `icon`        | `size`, `shape`, `night`, `monochrome`, as requested; `png` in Base64; `error`: why it is not   |
 * |               | complete                                                                                        |
 * | `signature`   | as docs/verify.schema.json has it, without the file                                             |
 * | `permissions` | `items`: `name`, `label`, `description`, `isDangerous`, `group` (its label), dangerous first    |
 * | `launchers`   | `items`: `className`, `label`, `isShown`, `kind`, `png`                                         |
 * | `contents`    | `items`: `name`, `size`, `packed`, `crc`                                                        |
 * | `languages`   | `items`: `tag`, `name` in the language itself, `label` of the application                       |
 * | `manifest`    | `text`: XML                                                                                     |
 * | `resources`   | `items`: `name`, `type` ("string"), `value` for everybody, `isDrawable`                         |
 * | `lint`        | `items`: `check`, `severity`, `message`, `subject`                                              |
 * | `end`         | nothing                                                                                         |
 *
 * With it: `hello`, `head`, `otherHead` (the same of the other file), `diff` as docs/diff.schema.json has it, `end`.
 *
 * A list that was cut has `more`, the number of the items left out; a text that was cut has it for its characters. A
 * topic that failed has the text `error` and maybe nothing else. The viewer shows a topic with an error and content,
 * such as the permissions of a package that Android refuses.
 *
 * Requests are answered between two topics, in their order:
 *
 * | `want`     | members                                  | answers                                                   |
 * |------------|------------------------------------------|-----------------------------------------------------------|
 * | `icon`     | `size` in pixels, 1 to MaxPixels;        | `icon`                                                    |
 * |            | `shape`: "none", "circle", "rounded",    |                                                           |
 * |            | "squircle"; `night`, `monochrome`        |                                                           |
 * | `drawable` | `name` as `resources` has it, `size`     | `drawable`: `name`, `size`, `png`, `error`                |
 * | `locale`   | `tag` after BCP 47; "" for the user's    | `head`, `permissions`, `launchers`, or `head` and         |
 * |            |                                          | `otherHead` of a comparison                               |
 *
 * `done` follows the last answer to each request, also to one that the reader does not know.
 */
namespace Viewer {

namespace Protocol {

constexpr int Version = 1;

/// Bytes of a line.
constexpr int MaxLineBytes = 64 << 20;
/// Bytes of a request. The reader ends when a line is longer.
constexpr int MaxRequestBytes = 64 << 10;
/// Sides of a picture. DrawableRenderer draws no larger one.
constexpr int MaxPixels = 1024;
/// Answers to one request, with `done`.
constexpr int MaxAnswersPerRequest = 4;

/// Items of a list, each. A ZIP archive without extensions has no more members.
constexpr int MaxItems = 65535;
/// Launchers and other entries. The icons of the first MaxEntryIcons are drawn.
constexpr int MaxEntries = 1024;
constexpr int MaxEntryIcons = 128;
/// Characters of a text in a list or a head.
constexpr int MaxTextLength = 4096;
/// Characters of the value of a resource.
constexpr int MaxValueLength = 512;
/// Characters of the manifest.
constexpr int MaxManifestLength = 8 << 20;
/// Characters of all texts in a list together. Each takes at most 6 bytes in a line.
constexpr int MaxListLength = 4 << 20;
/// Languages whose label is looked up because no value has just their tag.
constexpr int MaxLabelLookups = 128;

} // namespace Protocol

} // namespace Viewer

#endif
