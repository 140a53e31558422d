#include "bench_assets.h"

#include "op/op_otl_index.h"

#include <FS/FS_IndexFile.h>

#include <zlib.h>

#include <cstdio>
#include <fstream>
#include <random>
#include <stdexcept>

namespace bench
{

namespace
{

/// An entry of the archive: a header of numbers, a name that ends with a NUL, and a text.
std::string entry(const std::string& name, const std::string& text)
{
    char sizes[32];
    std::snprintf(sizes, sizeof sizes, "%011o%06o%011o", 0u, static_cast<unsigned>(name.size() + 1),
                  static_cast<unsigned>(text.size()));
    return "070707000001000000000666000000000000000001000000" + std::string(sizes) + name +
           std::string(1, '\0') + text;
}

std::string numberText(std::mt19937& random)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", static_cast<double>(random()) / 4294967296.0);
    return text;
}

std::string definitionText(std::mt19937& random)
{
    return "comment \"\"\nposition " + numberText(random) + " " + numberText(random) +
           "\ncachesize 1\nconnectornextid 4\n"
           "flags =  lock off model off template off footprint off xray off bypass off display off render "
           "off "
           "highlight off unload off savedata off compress off exposed on\n"
           "outputsNamed3\n{\n3 \"rgb\"\n}\ninputsNamed3\n{\n0 \tnoise1 0 1 \"color\"\n}\ninputs\n{\n0 "
           "\tnoise1 0 1\n}\nstat\n{\n  create 1355794743\n  modify 1355797233\n  author artist\n  access "
           "0777\n}\ncolor UT_Color RGB 0.8 0.8 0.8 \ndelscript \"\"\nexprlanguage hscript\nend\n";
}

std::string parmText(std::mt19937& random)
{
    const int parms = 30;
    std::string text = "{\nversion 0.8\n";
    for (int i = 0; i < parms; ++i)
        text += "amount" + std::to_string(i) + "\t[ 0\tlocks=0 ]\t(\t" + numberText(random) + "\t)\n";
    return text + "}\n";
}

std::string childText(const std::string& name, const std::string& type, std::mt19937& random)
{
    return entry("hdaroot/" + name + ".init", "type = " + type + "\nmatchesdef = 0\n") +
           entry("hdaroot/" + name + ".def", definitionText(random)) +
           entry("hdaroot/" + name + ".parm", parmText(random));
}

std::string sectionName(const std::string& type) { return standin::tableAndName("Vop", type); }

OP_OTLDefinition definitionOf(const std::string& type)
{
    standin::DefinitionFields fields;
    fields.name = type;
    fields.label = type;
    fields.path = "oplib:/" + sectionName(type) + "?" + sectionName(type);
    fields.table = "Vop";
    fields.extra = "*";
    fields.subnet = true;
    return standin::makeDefinition(fields);
}

void addSection(FS_IndexFile& index, const std::string& name, const std::string& bytes)
{
    index.addSection(name.c_str(), bytes.data(), static_cast<int>(bytes.size()), 0);
}

} // namespace

std::string assetContents(std::size_t bytes, const std::string& lastChild)
{
    std::mt19937 random(1);
    std::string archive = entry("node_type", "Vop\n") + entry("hdaroot.init", "type = own\nmatchesdef = 0\n");
    const std::string last = childText("last", lastChild, random);
    for (int i = 0; archive.size() + last.size() < bytes; ++i)
        archive += childText("node" + std::to_string(i), "korvan::noise", random);
    archive += last + entry("TRAILER!!!", "");
    std::string size;
    for (int shift = 0; shift < 32; shift += 8)
        size += static_cast<char>(archive.size() >> shift & 0xff);
    return size + archive;
}

std::string gzip(const std::string& bytes)
{
    z_stream stream = {};
    deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, 16 + MAX_WBITS, 8, Z_DEFAULT_STRATEGY);
    std::string packed(deflateBound(&stream, bytes.size()), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

std::size_t writeAssetFile(const std::filesystem::path& file, const std::vector<AssetType>& types)
{
    std::vector<OP_OTLDefinition> definitions;
    for (const AssetType& type : types)
        definitions.push_back(definitionOf(type.name));
    FS_IndexFile library;
    addSection(library, standin::index_section, standin::writeDefinitions(definitions));
    std::size_t stored = 0;
    for (const AssetType& type : types)
    {
        const std::string contents = type.compressed ? gzip(type.contents) : type.contents;
        FS_IndexFile sections;
        addSection(sections, "DialogScript", "{\n    name\t" + type.name + "\n}\n");
        addSection(sections, type.compressed ? "Contents.gz" : "Contents", contents);
        addSection(library, sectionName(type.name), sections.toBytes());
        stored = contents.size();
    }
    // Not by the library's own writing: that waits for the disk, thousands of times here.
    const std::string bytes = library.toBytes();
    std::ofstream out(file, std::ios::binary);
    if (!out.write(bytes.data(), static_cast<std::streamsize>(bytes.size())).flush())
        throw std::runtime_error("\"" + file.string() + "\" cannot be written. Check the space left there.");
    return stored;
}

} // namespace bench
