/* Text on its way between a tree, which holds GB18030, and the world, which mostly wants UTF-8. */
#ifndef TUTORIALS_UTF8_H
#define TUTORIALS_UTF8_H

/* Both return a new string, which the caller releases with free(), or NULL: for NULL, for text that
 * the other encoding cannot hold, and without memory. */
char* utf8OfTree(const char* text);
char* treeOfUtf8(const char* text);

#endif
