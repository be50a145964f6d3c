#include <ZemTokenContainer.h>

#include "token_stream.h"

#include <ZemTokenFilter.h>
#include <ZemTranslate.h>

namespace Zem {

namespace {

constexpr unsigned int BLOCK_VERSION = 1;

} // namespace

TokenFilter::~TokenFilter() = default;

TokenAllPassFilter::~TokenAllPassFilter() = default;

bool TokenAllPassFilter::isFilteredOut(TokenInfo const &) const
{
    return false;
}

TokenContainer::TokenContainer() = default;

TokenContainer::TokenContainer(TokenContainer const &) = default;

TokenContainer &TokenContainer::operator=(TokenContainer const &) = default;

TokenContainer::TokenContainer(TokenInterface const *source, TokenFilter const &filter, StageIdentifier const &stage)
{
    std::vector<TokenInfo> infos;
    source->getTokens(&infos);
    for (TokenInfo const &info : infos) {
        QString name;
        if (!filter.isFilteredOut(info) && parseToken(info.getName(), &name, nullptr)) {
            set(name, info, source->getValue(name, IndexIdentifier::NO_INDEX, stage));
        }
    }
}

TokenContainer::~TokenContainer() = default;

void TokenContainer::getTokens(std::vector<TokenInfo> *tokens) const
{
    tokens->clear();
    tokens->reserve(tokens_.size());
    for (Token const &token : tokens_) {
        tokens->push_back(token.info);
    }
}

Value TokenContainer::getValue(QString name, IndexIdentifier const &index, StageIdentifier const &) const
{
    Token const *const token = find(name);
    if (!token) {
        return Value::UNKNOWN;
    }
    return index == IndexIdentifier::NO_INDEX ? token->value : Value::INVALID;
}

unsigned int TokenContainer::getModifiedCounter(QString const &name) const
{
    Token const *const token = find(name);
    return token ? token->modifiedCounter : 0;
}

void TokenContainer::setValue(TokenInfo const &info, Value const &value)
{
    QString name;
    if (!parseToken(info.getName(), &name, nullptr)) {
        throw ProgError("Zem::TokenContainer::setValue", "token_container", __LINE__, "the name is no token text");
    }
    set(name, info, value);
}

void TokenContainer::set(QString const &name, TokenInfo const &info, Value const &value)
{
    auto const found = indices_.constFind(name);
    if (found == indices_.constEnd()) {
        indices_.insert(name, tokens_.size());
        tokens_.push_back({info, value});
        return;
    }
    Token &token = tokens_[*found];
    token.info = info;
    if (!(token.value == value)) {
        token.value = value;
        ++token.modifiedCounter;
    }
}

TokenContainer::Token const *TokenContainer::find(QString const &name) const
{
    auto const found = indices_.constFind(name);
    return found == indices_.constEnd() ? nullptr : &tokens_[*found];
}

void TokenContainer::save(IO::OutStream *stream) const
{
    stream->beginBlock(4, BLOCK_VERSION);
    stream->writeUInt(static_cast<unsigned int>(tokens_.size()));
    stream->endBlock();
    for (Token const &token : tokens_) {
        token.info.save(stream);
        token.value.save(stream);
    }
}

void TokenContainer::load(IO::InStream *stream)
{
    TokenContainer read;
    unsigned int count = 0;
    TokenStream::openBlock(stream, BLOCK_VERSION);
    stream->readUInt(&count);
    stream->closeBlock();
    for (unsigned int i = 0; i < count; ++i) {
        TokenInfo info;
        Value value;
        info.load(stream);
        value.load(stream);
        QString name;
        if (!parseToken(info.getName(), &name, nullptr)) {
            throw IO::StreamException(translate("Token_Stream_err", "'%1' is no token name").arg(info.getName()));
        }
        read.set(name, info, value);
    }
    read.countChangesSince(*this);
    *this = read;
}

void TokenContainer::countChangesSince(TokenContainer const &before)
{
    for (Token &token : tokens_) {
        QString name;
        parseToken(token.info.getName(), &name, nullptr);
        if (Token const *const old = before.find(name)) {
            token.modifiedCounter = old->modifiedCounter + (token.value == old->value ? 0 : 1);
        }
    }
}

} // namespace Zem
