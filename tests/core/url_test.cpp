#include "baseapi/core/url.h"

#include <gtest/gtest.h>

namespace baseapi {
namespace {

TEST(URL, OfAnAddressKeepsItsTextAndHasNoPath) {
    const URL url("https://example.org/a%20b/c.tar.gz?x=1#y");
    EXPECT_FALSE(url.isFileURL());
    EXPECT_EQ(url.text(), "https://example.org/a%20b/c.tar.gz?x=1#y");
    EXPECT_EQ(url.path(), "");
    EXPECT_EQ(url.lastPathComponent(), "c.tar.gz");
    EXPECT_EQ(url.pathExtension(), "gz");
}

TEST(URL, OfAnAddressDecodesItsLastComponent) {
    EXPECT_EQ(URL("https://example.org/a/b%20c").lastPathComponent(), "b c");
    EXPECT_EQ(URL("https://example.org/a/b/").lastPathComponent(), "b");
    EXPECT_EQ(URL("https://example.org/").lastPathComponent(), "/");
    EXPECT_EQ(URL("https://example.org").lastPathComponent(), "");
    EXPECT_EQ(URL("https://example.org?a/b").lastPathComponent(), "");
}

TEST(URL, WithTheFileSchemeIsAFileWhosePathIsDecoded) {
    const URL url("file:///home/a%20b/%E4%BD%A0.jpg");
    EXPECT_TRUE(url.isFileURL());
    EXPECT_EQ(url.path(), "/home/a b/你.jpg");
    EXPECT_EQ(URL("FILE://localhost/a?b#c").path(), "/a");
    EXPECT_EQ(URL("file:/a").path(), "/a");
}

TEST(URL, KeepsPercentSequencesThatAreNoneOrThatNoPathCanHold) {
    EXPECT_EQ(URL("file:///a%2").path(), "/a%2");
    EXPECT_EQ(URL("file:///a%zz%").path(), "/a%zz%");
    EXPECT_EQ(URL("file:///a%00b").path(), "/a%00b");
}

TEST(URL, OfAFileTakesThePathAsItIs) {
    const auto url = URL::file("/tmp/100%25 ?#.Jpg");
    EXPECT_TRUE(url.isFileURL());
    EXPECT_EQ(url.path(), "/tmp/100%25 ?#.Jpg");
    EXPECT_EQ(url.lastPathComponent(), "100%25 ?#.Jpg");
    EXPECT_EQ(url.pathExtension(), "Jpg");
    EXPECT_EQ(url, URL::file("/tmp/100%25 ?#.Jpg"));
}

TEST(URL, OfAFolderIgnoresTheSlashAtItsEnd) {
    EXPECT_EQ(URL::file("/a/b.d/").lastPathComponent(), "b.d");
    EXPECT_EQ(URL::file("/").lastPathComponent(), "/");
    EXPECT_EQ(URL::file("name").lastPathComponent(), "name");
}

TEST(URL, HasNoExtensionWithoutADotOrWithOnlyALeadingOne) {
    EXPECT_EQ(URL::file("/a.b/c").pathExtension(), "");
    EXPECT_EQ(URL::file("/a/.profile").pathExtension(), "");
    EXPECT_EQ(URL::file("/a/.profile.bak").pathExtension(), "bak");
    EXPECT_EQ(URL::file("/a/b.").pathExtension(), "");
}

TEST(URL, WithoutASchemeOrWithOneThatOnlyBeginsAlikeIsNoFile) {
    EXPECT_FALSE(URL("/home/a").isFileURL());
    EXPECT_FALSE(URL("files:///a").isFileURL());
    EXPECT_FALSE(URL("").isFileURL());
    EXPECT_FALSE(URL("file").isFileURL());
}

}  // namespace
}  // namespace baseapi
