# Fills every unfinished translation of IN with its source text between two ¤ marks and writes
# OUT, so that a text shown without the marks is one that never went through a translator.
file(READ ${IN} catalogue)
string(REGEX REPLACE
       "<source>([^<]*)</source>([^<]*)<translation type=\"unfinished\"></translation>"
       "<source>\\1</source>\\2<translation>¤\\1¤</translation>" catalogue "${catalogue}")
file(WRITE ${OUT} "${catalogue}")
