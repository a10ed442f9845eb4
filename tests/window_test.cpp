// Parts of the window module that need no window.
#include <gtest/gtest.h>

#include "app/window.h"

TEST(Window, ExtensionsMatchOnlyWholeWords) {
    const char* list = "GL_ARB_vertex_buffer_object_extra GL_EXT_framebuffer_object GL_ARB_shader_objects";
    EXPECT_TRUE(ExtensionListed(list, "GL_EXT_framebuffer_object"));
    EXPECT_TRUE(ExtensionListed(list, "GL_ARB_shader_objects")) << "the last word ends at the string's end";
    EXPECT_FALSE(ExtensionListed(list, "GL_ARB_vertex_buffer_object")) << "a prefix of a listed name";
    EXPECT_FALSE(ExtensionListed(list, "EXT_framebuffer_object")) << "a suffix of a listed name";
    EXPECT_FALSE(ExtensionListed(list, "GL_EXT_framebuffer_object GL_ARB_shader_objects"));
    EXPECT_FALSE(ExtensionListed(list, ""));
    EXPECT_FALSE(ExtensionListed(nullptr, "GL_ARB_shader_objects"));
    // A name that first appears inside a longer one and later on its own.
    EXPECT_TRUE(ExtensionListed("GL_A_longer GL_A", "GL_A"));
}
