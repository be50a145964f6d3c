// ZemFig2ImportInfo.h: what an element keeps of the older file that it came from.
// Layer: values. Plain values; distinct objects may be used from distinct threads.
#pragma once

namespace Zem::Fig2 {

/// Marks an element that came from an older file.
class ImportInfo
{
public:
    virtual ~ImportInfo();
    /// Owned by the caller.
    virtual ImportInfo *copy() const = 0;

protected:
    ImportInfo() = default;
    ImportInfo(ImportInfo const &) = default;
    ImportInfo &operator=(ImportInfo const &) = default;
};

/// What the token of an image element named in the older file.
class ImageImportInfo : public ImportInfo
{
public:
    enum TokenType_t : unsigned int { TOKEN_NONE = 0, TOKEN_IMAGE = 1, TOKEN_SNAPSHOT = 2 };

    ImageImportInfo *copy() const override;

    TokenType_t getTokenType() const { return tokenType_; }
    void setTokenType(TokenType_t type) { tokenType_ = type; }

private:
    TokenType_t tokenType_ = TOKEN_NONE;
};

} // namespace Zem::Fig2
