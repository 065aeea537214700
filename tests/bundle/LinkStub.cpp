#include "tests/bundle/LinkStub.h"

#include <llvm/Support/MemoryBuffer.h>
#include <llvm/TextAPI/InterfaceFile.h>
#include <llvm/TextAPI/TextAPIReader.h>

#include <stdexcept>
#include <utility>

namespace {

using llvm::MachO::InterfaceFile;
using llvm::MachO::Symbol;

// Its name differs between the versions of LLVM, its values don't.
using SymbolKind = decltype(std::declval<Symbol>().getKind());

void addSymbol(const Symbol& symbol, std::set<std::string>& names) {
    const std::string name = symbol.getName().str();
    switch (symbol.getKind()) {
    case SymbolKind::GlobalSymbol:
        names.insert(name);
        break;
    case SymbolKind::ObjectiveCClass:
        names.insert("_OBJC_CLASS_$_" + name);
        names.insert("_OBJC_METACLASS_$_" + name);
        break;
    case SymbolKind::ObjectiveCClassEHType:
        names.insert("_OBJC_EHTYPE_$_" + name);
        break;
    case SymbolKind::ObjectiveCInstanceVariable:
        names.insert("_OBJC_IVAR_$_" + name);
        break;
    }
}

void addSymbols(const InterfaceFile& file, std::set<std::string>& names) {
    for (const Symbol* const symbol : file.symbols()) {
        if (symbol->getArchitectures().has(llvm::MachO::AK_x86_64)) {
            addSymbol(*symbol, names);
        }
    }
    for (const auto& inner : file.documents()) {
        addSymbols(*inner, names);
    }
}

} // namespace

LinkStub readLinkStub(const std::string& path) {
    auto bytes = llvm::MemoryBuffer::getFile(path);
    if (!bytes) {
        throw std::runtime_error(path + ": " + bytes.getError().message());
    }
    auto file = llvm::MachO::TextAPIReader::get((*bytes)->getMemBufferRef());
    if (!file) {
        throw std::runtime_error(path + ": " + llvm::toString(file.takeError()));
    }
    LinkStub stub;
    stub.installName = (*file)->getInstallName().str();
    addSymbols(**file, stub.symbols);
    return stub;
}
