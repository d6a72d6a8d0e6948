# Saving a page ends a path that was left open, also one that is to clip. libharu ends the former only; the latter left
# a clipping operator without the painting operator it needs, and inside a saved state no document with such a page
# could be saved, because the state cannot be restored within a path.
libharu_edit(FILE src/hpdf_pages.c
  ANCHOR "attr->gmode == HPDF_GMODE_PATH_OBJECT"
  REPLACEMENT "attr->gmode & (HPDF_GMODE_PATH_OBJECT | HPDF_GMODE_CLIPPING_PATH)")
